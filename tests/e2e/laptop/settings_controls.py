"""The controls of the settings window: how they are found, focused and operated by keyboard."""
from .waiting import wait_until

STEPPERS = {
    'limit': ('Alert when charging reaches {}%', 80, 50, 100),
    'low': ('Alert on battery at {}% or less', 20, 5, 50),
    'longHours': ('Alert after {} h plugged in above the charge limit', 8, 1, 48),
}
SOUNDS = ['limitSound', 'lowSound', 'longSound', 'healthSound']  # from top to bottom
OPERABLE = ('check box', 'spin box', 'combo box', 'push button')


def operable(window):
    return [control for control in window.walk() if control.role in OPERABLE]


def pickers(window):
    return [control for control in window.walk() if control.role == 'combo box']


def stepper(window, key):
    title, *_ = STEPPERS[key]
    return next(control for control in window.walk() if control.role == 'spin box'
                and control.name == title.format(int(control.value)))


def focus(control):
    control.focus()
    wait_until(lambda: control.focused, lambda: f'the focus on {control}', look_every=0.02)


def press(desktop, control, *keys):
    focus(control)
    desktop.screen.press_keys(*keys)


def focus_picker(desktop, window, key):
    """Presses Tab on the previous control, because Qt cannot focus a combo box through accessibility."""
    picker = pickers(window)[SOUNDS.index(key)]
    controls = operable(window)
    press(desktop, controls[controls.index(picker) - 1], 'Tab')
    wait_until(lambda: picker.focused, f'the focus on {key}', look_every=0.02)
    return picker


def type_time(desktop, control, keys):
    press(desktop, control, *keys, 'Return')
