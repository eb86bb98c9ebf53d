"""Installed like an application: started from its desktop file and by D-Bus activation, without any tray."""
import os
import pathlib
import signal
import subprocess

import pytest

from laptop.bus_monitor import BusMonitor
from laptop.desktop import Desktop
from laptop.installation import Installation, installed, upgrade
from laptop.status_item import OWNER
from laptop.waiting import wait_until


@pytest.fixture(scope='module')
def program(pytestconfig, tmp_path_factory):
    return installed(pytestconfig.getoption('--vorlane'), tmp_path_factory.mktemp('installed'))


@pytest.fixture
def desktop(laptop):
    return Desktop(laptop)


@pytest.fixture
def installation(program, laptop, desktop):
    return Installation(program, laptop)


def test_its_desktop_file_starts_it_and_opens_the_popover(installation, desktop, item):
    process = installation.launch()

    popover = desktop.accessibility.wait_for_window('Vorlane')
    assert '60%' in popover.texts()
    assert item.get('IconThemePath') == str(installation.share / 'icons')
    desktop.close_popover()
    # An activation right after closing counts as the click that closed it, so retry.
    wait_until(lambda: installation.launch() == process and desktop.popover(), 'the popover', look_every=0.3)
    installation.quit()
    assert [sample['p'] for sample in desktop.vorlane.history()] == [60]


def test_the_popover_leads_to_the_settings(installation, desktop):
    installation.launch()
    popover = desktop.accessibility.wait_for_window('Vorlane')

    desktop.click(popover, popover.find('Settings'))

    desktop.accessibility.wait_for_window('Vorlane Settings')
    installation.quit()


def test_its_desktop_actions_work_whether_or_not_it_runs(installation, desktop, item):
    process = installation.choose('settings')
    desktop.accessibility.wait_for_window('Vorlane Settings')

    assert installation.choose('snooze') == process
    item.wait_for_menu_line('Cancel Snooze')

    installation.choose('quit')
    installation.wait_for_end()


def test_the_next_login_starts_it_from_any_install_path(laptop, vorlane, desktop):
    prefix = pathlib.Path(laptop.machine.folder('home', r'100% "quoted" $HOME `of` \ mine, grüße'))
    vorlane.install_to(prefix)
    desktop.start(notifications=False)
    desktop.open_settings().find('Launch at Login', 'check box').do('Toggle')
    wait_until(vorlane.autostart_path.exists, 'the autostart file', look_every=0.02)
    vorlane.quit()

    launcher = laptop.machine.start('vorlane', ['/usr/bin/gio', 'launch', str(vorlane.autostart_path)],
                                    vorlane.environment())
    laptop.session_bus.wait_for(OWNER)
    process = laptop.session_bus.pid_of(OWNER)

    assert os.readlink(f'/proc/{process}/exe') == str(prefix / 'bin/vorlane')
    os.kill(process, signal.SIGTERM)
    laptop.session_bus.wait_until_free(OWNER)
    assert (launcher.wait_for_end(), launcher.stderr) == (0, '')


def test_options_work_like_the_desktop_actions(laptop, vorlane, desktop, item):
    vorlane.start(arguments=['--open'])
    desktop.accessibility.wait_for_window('Vorlane')

    for option in ('--settings', '--snooze'):
        second = vorlane.spawn(arguments=[option])
        assert (second.wait_for_end(), second.stdout, second.stderr) == (0, '', '')
    desktop.accessibility.wait_for_window('Vorlane Settings')
    item.wait_for_menu_line('Cancel Snooze')

    assert vorlane.spawn(arguments=['--quit']).wait_for_end() == 0
    vorlane.expect_clean_end()


def test_the_quit_option_starts_nothing_if_it_is_not_running(laptop, vorlane):
    process = vorlane.spawn(arguments=['--quit'])

    assert (process.wait_for_end(), process.stdout, process.stderr) == (0, '', '')
    assert vorlane.history() is None


def test_an_unknown_option_prints_the_usage(laptop, vorlane):
    process = vorlane.spawn(arguments=['--opne'])

    assert (process.wait_for_end(), process.stdout) == (2, '')
    assert process.stderr.startswith('Usage: vorlane ')


def test_a_second_start_passes_on_its_activation_token(laptop, vorlane):
    vorlane.start()
    monitor = BusMonitor(laptop.session_bus, ["interface='org.freedesktop.Application'"])

    second = vorlane.spawn(environment={'XDG_ACTIVATION_TOKEN': 'token', 'DESKTOP_STARTUP_ID': 'start_TIME7'})
    assert second.wait_for_end() == 0

    monitor.catch_up()
    [call] = [seen for seen in monitor.messages if seen.kind == 'call']
    assert (call.member, call.arguments) == (
        'Activate', ({'activation-token': 'token', 'desktop-startup-id': 'start_TIME7'},))


def test_after_an_upgrade_a_signal_restarts_it_in_place(laptop, vorlane, item, tmp_path):
    vorlane.install_to(tmp_path)
    vorlane.start()
    laptop.charge_to(59)
    item.wait_for_label('59%')
    upgrade(tmp_path)

    vorlane.restart_in_place()

    assert laptop.session_bus.pid_of(OWNER) == vorlane.process.pid
    item.wait_for_label('59%')
    assert [sample['p'] for sample in vorlane.history()][:2] == [60, 59]


def test_an_upgrade_without_a_signal_is_noticed_at_the_next_click(laptop, vorlane, desktop, tmp_path):
    vorlane.install_to(tmp_path)
    vorlane.start()
    old = laptop.session_bus.owner(OWNER)
    upgrade(tmp_path)

    vorlane.activate()

    desktop.accessibility.wait_for_window('Vorlane')
    assert laptop.session_bus.owner(OWNER) != old
    assert laptop.session_bus.pid_of(OWNER) == vorlane.process.pid


def test_its_desktop_metadata_is_valid(installation):
    applications = installation.share / 'applications'
    for command in (['desktop-file-validate', applications / f'{OWNER}.desktop'],
                    ['appstreamcli', 'validate', '--no-net',
                     installation.share / 'metainfo' / f'{OWNER}.metainfo.xml']):
        checked = subprocess.run(command, capture_output=True, text=True)
        assert checked.returncode == 0, checked.stdout + checked.stderr
    icons = installation.share / 'icons/hicolor'
    sizes = {path.parents[1].name for path in icons.glob(f'*/apps/{OWNER}*')}
    assert {'16x16', '48x48', '256x256', 'scalable', 'symbolic'} <= sizes
