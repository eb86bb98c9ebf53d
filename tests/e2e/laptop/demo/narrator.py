"""Tells what happens, one line each: the time in the laptop, what speaks, what it says."""


class Narrator:
    def __init__(self, clock):
        self._clock = clock
        self._last_item = None

    def reading(self, percent, status, watts):
        rate = f'{watts:4.1f} W' if watts else ''
        self._say('battery', f'{percent:3}%   {status:<13} {rate}'.rstrip())

    def user(self, text):
        self._say('user', text)

    def item(self, icon, label, tooltip):
        """The tray item, when anything about it is new."""
        now = (icon, label, tooltip)
        if now == self._last_item:
            return
        self._last_item = now
        symbol = icon.removeprefix('vorlane-').removesuffix('-symbolic')
        self._say('tray item', f'{label:>4}   [{symbol}]  {tooltip}')

    def notification(self, posted):
        titles = posted.actions[1::2]
        buttons = ''.join(f'  [{title}]' for title in titles)
        self._say('notification', f'*      {posted.title}: {posted.body}{buttons}')

    def picture(self, path):
        self._say('screenshot', f'       {path}')

    def _say(self, who, text):
        print(f'{self._clock.now():%H:%M}  {who:<13} {text}', flush=True)
