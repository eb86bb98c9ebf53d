"""The resource use of a running process, as counted by the kernel."""
import dataclasses
import os
import pathlib
import re


@dataclasses.dataclass
class Footprint:
    dirty: int = 0      # bytes of private dirty memory
    resident: int = 0   # bytes of resident memory
    threads: int = 0
    descriptors: int = 0
    wakeups: int = 0    # of all threads since the start
    cpu: float = 0      # seconds of processor time since the start

    def __init__(self, pid):
        process = pathlib.Path(f'/proc/{pid}')
        rollup = (process / 'smaps_rollup').read_text()
        self.dirty = _number('Private_Dirty', rollup) * 1024
        self.resident = _number('Rss', rollup) * 1024
        self.descriptors = len(os.listdir(process / 'fd'))
        self._tasks = {task.name: _task(task) for task in (process / 'task').iterdir()}
        self.threads = len(self._tasks)
        self.wakeups, self.cpu = (sum(costs) for costs in zip(*self._tasks.values()))

    @property
    def held(self):
        """Memory, threads and open files as text."""
        return (f'{self.dirty / 1e6:.1f} MB private dirty, {self.resident / 1e6:.1f} MB resident, '
                f'{self.threads} threads, {self.descriptors} open files')

    def __sub__(self, earlier):
        """CPU time and wake-ups between two footprints; memory, threads and descriptors of the later one.

        The costs of a thread that has ended in between are lost.
        """
        difference = object.__new__(Footprint)
        difference.__dict__.update(self.__dict__)
        spent = [[late - early for late, early in zip(costs, earlier._tasks.get(name, (0, 0)))]
                 for name, costs in self._tasks.items()]
        difference.wakeups, difference.cpu = (sum(costs) for costs in zip(*spent))
        return difference


def _task(folder):
    """The wake-ups and CPU seconds of one thread."""
    return (_number('voluntary_ctxt_switches', (folder / 'status').read_text()),
            int((folder / 'schedstat').read_text().split()[0]) / 1e9)


def _number(name, text):
    return int(re.search(rf'^{name}:\s*(\d+)', text, re.MULTILINE).group(1))
