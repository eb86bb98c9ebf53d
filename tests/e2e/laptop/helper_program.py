"""Programs that a package keeps for its own use."""
import os


def helper_program(path):
    """The full path: in libexec since Debian 13, in lib before."""
    libexec = '/usr/libexec/' + path
    return libexec if os.path.exists(libexec) else '/usr/lib/' + path
