"""Prints one line per event: the laptop's time, the source, the text."""


class Narrator:
    def __init__(self, clock):
        self._clock = clock
        self._last_item = None

    def reading(self, percent, status, watts):
        rate = f'{watts:4.1f} W' if watts else ''
        self._print('battery', f'{percent:3}%   {status:<13} {rate}'.rstrip())

    def user(self, text):
        self._print('user', text)

    def item(self, icon, label, tooltip):
        """Prints the tray item if anything about it has changed."""
        now = (icon, label, tooltip)
        if now == self._last_item:
            return
        self._last_item = now
        symbol = icon.removeprefix('vorlane-').removesuffix('-symbolic')
        self._print('tray item', f'{label:>4}   [{symbol}]  {tooltip}')

    def notification(self, posted):
        titles = posted.actions[1::2]
        buttons = ''.join(f'  [{title}]' for title in titles)
        self._print('notification', f'*      {posted.title}: {posted.body}{buttons}')

    def picture(self, path):
        self._print('screenshot', f'       {path}')

    def _print(self, source, text):
        print(f'{self._clock.now():%H:%M}  {source:<13} {text}', flush=True)
