"""The libraries that are loaded before a program's own, and where they lie."""
import glob
import re
import subprocess


def library(pattern):
    """The newest file of that name in the system's library folders."""
    found = sorted(glob.glob(f'/usr/lib/*/{pattern}') + glob.glob(f'/usr/lib/{pattern}'))
    if not found:
        raise FileNotFoundError(f'no {pattern} under /usr/lib')
    return found[-1]


def testbed_environment():
    # libsystemd refuses devices outside of the real /sys unless it is told not to look.
    return {'LD_PRELOAD': library('libumockdev-preload.so.0'), 'SYSTEMD_DEVICE_VERIFY_SYSFS': '0'}


def sanitizer_of(program):
    """The address sanitizer's library that a program was linked with, which must come first; or None."""
    listing = subprocess.run(['ldd', program], capture_output=True, text=True).stdout
    found = re.search(r'libasan\S* => (\S+)', listing)
    return found.group(1) if found else None
