"""Starts what desktop files name, as a desktop on GLib does: launch.py FILE..."""
import sys

from gi.repository import Gio

for name in sys.argv[1:]:
    try:
        Gio.DesktopAppInfo.new_from_filename(name).launch([], None)
    except Exception as error:
        sys.exit(f'{name}: {error}')
