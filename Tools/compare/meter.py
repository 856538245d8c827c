"""What a program takes: processor time, memory, and when it has come to rest.

A program is a process and all that descends from it; the bus and its services are not counted.
"""

import os
import time

QUIET_SECONDS = 0.4
QUIET_SHARE = 0.02
POLL_SECONDS = 0.02


class DidNotRest(Exception):
    """A program was still busy when the time for an action was over."""


def descendants(root):
    """The process and its descendants, those that have ended left out."""
    children = {}
    for name in os.listdir("/proc"):
        if name.isdigit():
            fields = stat_fields(int(name))
            if fields:
                children.setdefault(int(fields[1]), []).append(int(name))
    found = [root]
    for pid in found:
        found += children.get(pid, [])
    return found


def stat_fields(pid, thread=None):
    """The fields of stat behind the name in parentheses: state, parent, ...; empty when the process is gone."""
    path = f"/proc/{pid}/task/{thread}/stat" if thread else f"/proc/{pid}/stat"
    try:
        with open(path, encoding="utf-8", errors="replace") as file:
            return file.read().rpartition(")")[2].split()
    except OSError:
        return []


class Meter:
    """Reads the processor time of one program, in seconds: user and system together.

    The X server, which serves nobody else, is read beside it: some programs have it draw what others draw themselves.
    """

    def __init__(self, root, server):
        self.root, self.server = root, server
        self.tick = 1 / os.sysconf("SC_CLK_TCK")

    def processor_seconds(self):
        return sum(self.seconds_of(pid) for pid in descendants(self.root))

    def server_seconds(self):
        return self.seconds_of(self.server)

    def seconds_of(self, pid):
        """What a process and those of its children that have ended used."""
        fields = stat_fields(pid)
        if not fields:
            return 0.0
        try:
            # The process's own clock: what utime and stime add up to, to the nanosecond instead of the tick.
            own = time.clock_gettime((~pid << 3) | 2)
        except OSError:
            own = (int(fields[11]) + int(fields[12])) * self.tick
        return own + (int(fields[13]) + int(fields[14])) * self.tick

    def is_running(self):
        fields = stat_fields(self.root)
        return bool(fields) and fields[0] not in "ZX"

    def wants_processor(self):
        """Whether a thread runs, waits for a processor or for a disk: on a loaded machine no time passes for it."""
        for pid in [*descendants(self.root), self.server]:
            try:
                threads = os.listdir(f"/proc/{pid}/task")
            except OSError:
                continue
            for thread in threads:
                fields = stat_fields(pid, thread)
                if fields and fields[0] in "RD":
                    return True
        return False

    def pss_megabytes(self):
        """Memory, what is shared with others counted by its share."""
        kilobytes = 0
        for pid in descendants(self.root):
            try:
                with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
                    kilobytes += sum(int(line.split()[1]) for line in file if line.startswith("Pss:"))
            except OSError:
                continue
        return kilobytes / 1024

    def rest(self, limit=120.0, quiet=QUIET_SECONDS):
        """Waits until less than 2 % of a core was used for the quiet time; returns when the program was last busy.

        The answer is a moment of time.monotonic(). Raises DidNotRest when the limit is over.
        """
        started = time.monotonic()
        last_busy = started
        samples = [(started, self.processor_seconds())]
        while True:
            time.sleep(POLL_SECONDS)
            now, used = time.monotonic(), self.processor_seconds()
            if used - samples[-1][1] > QUIET_SHARE * (now - samples[-1][0]):
                last_busy = now
            samples.append((now, used))
            # Of those old enough, only the newest is of use.
            while len(samples) > 1 and samples[1][0] <= now - quiet:
                samples.pop(0)
            span = now - samples[0][0]
            if span >= quiet and used - samples[0][1] < QUIET_SHARE * span and not self.wants_processor():
                return min(last_busy, samples[0][0])
            if now - started > limit:
                raise DidNotRest
            if not self.is_running():
                raise RuntimeError("the program has ended")


class Cost:
    """Seconds of processor, of the X server's processor and of the wall, from its making to the rest behind it."""

    def __init__(self, meter):
        self.meter = meter
        self.started = time.monotonic()
        self.used = meter.processor_seconds()
        self.served = meter.server_seconds()
        self.processor = self.server = self.wall = 0.0

    def until_rest(self, limit=120.0, quiet=QUIET_SECONDS):
        last_busy = self.meter.rest(limit, quiet)
        self.processor = self.meter.processor_seconds() - self.used
        self.server = self.meter.server_seconds() - self.served
        self.wall = max(0.0, last_busy - self.started)
        return self
