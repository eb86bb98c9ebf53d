"""The libraries to preload into programs, and where to find them."""
import glob
import re
import subprocess


def library(pattern):
    """The newest matching file in the system's library folders."""
    found = sorted(glob.glob(f'/usr/lib/*/{pattern}') + glob.glob(f'/usr/lib/{pattern}'))
    if not found:
        raise FileNotFoundError(f'no {pattern} under /usr/lib')
    return found[-1]


def testbed_environment():
    # By default libsystemd rejects devices outside the real /sys.
    return {'LD_PRELOAD': library('libumockdev-preload.so.0'), 'SYSTEMD_DEVICE_VERIFY_SYSFS': '0'}


def sanitizer_of(program):
    """The address sanitizer library that a program is linked with, or None. Must come first in LD_PRELOAD."""
    listing = subprocess.run(['ldd', program], capture_output=True, text=True).stdout
    found = re.search(r'libasan\S* => (\S+)', listing)
    return found.group(1) if found else None
