"""The busy cursor or task bar entry with which a desktop on X11 shows that a program is starting."""
from laptop.launch_messages import LaunchMessages
from laptop.waiting import wait_until


def test_each_start_ends_its_launch_feedback(laptop, screen, vorlane):
    messages = LaunchMessages(laptop.machine)
    vorlane.start()

    for startup_id in ('first-start-of-the-windows-process_TIME1', 'second_TIME2'):
        vorlane.activate(startup_id=startup_id)
        wait_until(lambda: f'remove: ID={startup_id}' in messages.texts(),
                   lambda: f'the end of {startup_id}; {messages.texts()}', look_every=0.05)
        wait_until(lambda: screen.window_titled('^Vorlane$'), 'the popover', look_every=0.05)
        screen.press_keys('Escape')
        wait_until(lambda: not screen.window_titled('^Vorlane$'), 'the popover to close', look_every=0.05)
