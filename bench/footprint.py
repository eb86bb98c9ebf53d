"""What a running process costs, as the kernel counts it."""
import dataclasses
import pathlib
import re


@dataclasses.dataclass
class Footprint:
    dirty: int = 0      # bytes of memory that it alone holds and has written
    resident: int = 0   # bytes of memory
    threads: int = 0
    wakeups: int = 0    # times that one of its threads stopped waiting, since its start
    cpu: float = 0      # seconds, since its start

    def __init__(self, pid):
        process = pathlib.Path(f'/proc/{pid}')
        rollup = (process / 'smaps_rollup').read_text()
        self.dirty = _number('Private_Dirty', rollup) * 1024
        self.resident = _number('Rss', rollup) * 1024
        tasks = list((process / 'task').iterdir())
        self.threads = len(tasks)
        self.wakeups = sum(_number('voluntary_ctxt_switches', (task / 'status').read_text()) for task in tasks)
        self.cpu = sum(int((task / 'schedstat').read_text().split()[0]) for task in tasks) / 1e9

    def __sub__(self, earlier):
        """What it cost between the two moments; memory and threads are those of the later one."""
        difference = object.__new__(Footprint)
        difference.__dict__.update(self.__dict__)
        difference.wakeups -= earlier.wakeups
        difference.cpu -= earlier.cpu
        return difference


def _number(name, text):
    return int(re.search(rf'^{name}:\s*(\d+)', text, re.MULTILINE).group(1))
