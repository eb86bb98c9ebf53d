"""The private folders, environment and processes of one virtual laptop."""
import os
import shutil
import subprocess
import tempfile

from .process import Process

KEPT_FROM_OUTSIDE = ('LANG', 'TERM')


class Machine:
    def __init__(self):
        # Short, because socket paths are limited to 107 bytes.
        self.root = tempfile.mkdtemp(prefix='vl-', dir='/tmp')
        self.processes = []
        for name in ('home', 'run', 'config', 'data', 'cache', 'state', 'log'):
            os.mkdir(self.folder(name), mode=0o700)
        self.environment = {name: os.environ[name] for name in KEPT_FROM_OUTSIDE if name in os.environ}
        self.environment.setdefault('LANG', 'C.UTF-8')
        self.environment.update(
            PATH='/usr/sbin:/usr/bin:/sbin:/bin',
            TZ='UTC',
            HOME=self.folder('home'),
            XDG_RUNTIME_DIR=self.folder('run'),
            XDG_CONFIG_HOME=self.folder('config'),
            XDG_DATA_HOME=self.folder('data'),
            XDG_CACHE_HOME=self.folder('cache'),
            XDG_STATE_HOME=self.folder('state'),
            GSETTINGS_BACKEND='memory',
            GIO_USE_VFS='local',
            NO_AT_BRIDGE='1',
            LIBGL_ALWAYS_SOFTWARE='1')

    def folder(self, *names):
        return os.path.join(self.root, *names)

    def write(self, text, *names):
        """Writes a file under the root and creates its folders; returns its path."""
        path = self.folder(*names)
        os.makedirs(os.path.dirname(path), mode=0o700, exist_ok=True)
        with open(path, 'w') as file:
            file.write(text)
        return path

    def locale(self, name):
        """The environment of a program in that locale, such as de_DE. Builds it, since the system may lack it."""
        folder = self.folder('locales')
        os.makedirs(folder, exist_ok=True)
        subprocess.run(['/usr/bin/localedef', '--no-archive', '--inputfile', name, '--charmap', 'UTF-8',
                        os.path.join(folder, f'{name}.UTF-8')], check=True)
        return {'LOCPATH': folder, 'LC_ALL': f'{name}.UTF-8'}

    def start(self, name, argv, environment=None, **options):
        """Starts a program; `environment` is added to the machine's own (None removes a name)."""
        merged = {**self.environment, **(environment or {})}
        merged = {key: value for key, value in merged.items() if value is not None}
        process = Process(name, argv, merged, self.folder('log'), **options)
        self.processes.append(process)
        return process

    def close(self):
        """Ends everything, the last started first, and removes the folders."""
        for process in reversed(self.processes):
            process.end()
        shutil.rmtree(self.root, ignore_errors=True)
