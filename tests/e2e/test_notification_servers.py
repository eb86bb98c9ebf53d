"""How each desktop's own notification server presents a reminder."""
import pathlib

import pytest

from laptop.machine import Machine
from laptop.notification_servers import SERVERS
from laptop.speaker import Speaker
from laptop.waiting import wait_until

LOW = ['Low battery', 'Battery is at 20%. Plug in soon.']
ODD = ['A <b>title</b> & &amp; more', 'A <b>body</b> & &lt; 3 < 4']
RED, GREEN, VIOLET = (0xe0, 0x43, 0x3a), (0x2a, 0x93, 0x50), (0x8f, 0x6b, 0xd6)


@pytest.fixture(params=SERVERS, ids=lambda kind: kind.__name__)
def server(request, laptop):
    return request.param(laptop).start()


@pytest.fixture(scope='module')
def shared_speaker(program):
    """Shared because it takes two seconds to start."""
    machine = Machine()
    try:
        yield Speaker(machine, pathlib.Path(program).parents[1] / 'share/sounds/vorlane/stereo').start()
    finally:
        machine.close()


@pytest.fixture
def speaker(laptop, shared_speaker):
    laptop.machine.environment['PULSE_SERVER'] = shared_speaker.address
    return shared_speaker


def limit(percent):
    return ['Charge limit reached', f'Battery is at {percent}%. Unplug to keep it healthy.']


def wait_for_texts(server, texts):
    wait_until(lambda: server.texts() == texts, lambda: f'{texts}; it shows {server.texts()}',
               look_every=0.02)


def asks_for_sound(notification):
    """Whether the server is asked to play the sound; otherwise it must be asked to stay silent."""
    hints = notification.hints
    asked = pathlib.Path(hints.get('sound-file', '')).name, hints['suppress-sound']
    assert asked in (('vorlane-frog.wav', 0), ('', 1))
    return asked[1] == 0


def wait_for_color(server, color):
    wait_until(lambda: server.screen.picture().shows(color), f'the icon of colour {color}', look_every=0.05)


def test_a_reminder_is_shown_with_its_sound_and_withdrawn_when_no_longer_true(
        laptop, speaker, vorlane, server, notifications):
    nothing = server.screen.picture()
    vorlane.write_settings('lowSound = "Frog"\n')
    vorlane.start()
    laptop.charge_to(20)
    wait_for_texts(server, LOW)
    wait_for_color(server, RED)
    assert speaker.wait_for_sound() == 'frog'
    assert asks_for_sound(notifications.wait_for(1)) == server.plays_sounds

    laptop.plug_in()

    wait_for_texts(server, [])
    wait_until(lambda: not server.screen.picture().difference(nothing), 'an empty screen', look_every=0.05)


def test_text_that_looks_like_markup_is_shown_literally(laptop, program, server):
    post = pathlib.Path(program).parents[1] / 'tests/post_notification'
    if not post.exists():
        pytest.skip(f'{post} does not exist: the tests were not built')

    laptop.machine.start('post_notification', [str(post), *ODD])

    wait_for_texts(server, ODD)


def test_a_repeat_is_shown_instead_of_the_previous_one(laptop, vorlane, server, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    wait_for_texts(server, limit(80))
    wait_for_color(server, GREEN)
    laptop.charge_to(81)
    item.wait_for_label('81%')

    vorlane.advance(300)

    wait_for_texts(server, limit(81))


def test_the_snooze_action_works(laptop, vorlane, server, notifications, item):
    vorlane.start()
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    wait_for_color(server, VIOLET)

    server.snooze()

    notifications.wait_for_action(health)
    item.wait_for_menu_line('Cancel Snooze')


@pytest.mark.parametrize('server', [kind for kind in SERVERS if kind.broadcasts_actions], indirect=True)
def test_the_snooze_action_survives_a_restart_in_place(laptop, vorlane, server, notifications, item):
    vorlane.start()
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    wait_for_color(server, VIOLET)
    vorlane.restart_in_place()

    server.snooze()

    notifications.wait_for_action(health)
    item.wait_for_menu_line('Cancel Snooze')
