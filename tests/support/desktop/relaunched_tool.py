"""The tool's second instance, which the first one starts and does not wait for."""

import contextlib
import os
import pathlib
import signal

from desktop import wait_for


def find(program):
    """The process id of the relaunched instance of a program; nothing when there is none."""
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            words = (folder / "cmdline").read_bytes().split(b"\0")
            if words[:2] == [os.fsencode(program), b"--adminRights"]:
                return int(folder.name)
    return None


def _parent(folder):
    """The id of a process's parent; nothing once the process is gone."""
    with contextlib.suppress(OSError):
        return (folder / "stat").read_text().rpartition(")")[2].split()[1]
    return None


class RelaunchedTool:
    """A process that is no child, with what the drivers of windows want of one."""

    returncode = None  # that of a process that is no child is not to be had

    def __init__(self, program):
        self.pid = wait_for(lambda: find(program), "relaunched instance")
        self._folder = pathlib.Path("/proc", str(self.pid))

    def poll(self):
        """None while it runs. Where the first process takes in no orphans it stays there, dead."""
        try:
            state = (self._folder / "stat").read_text().rpartition(")")[2].split()[0]
        except OSError:
            return 0
        return 0 if state == "Z" else None

    def wait(self):
        wait_for(lambda: self.poll() == 0, "end of the relaunched instance")

    def kill(self):
        with contextlib.suppress(ProcessLookupError):
            os.kill(self.pid, signal.SIGKILL)
        self.wait()

    @property
    def environment(self):
        entries = (self._folder / "environ").read_bytes().split(b"\0")
        return dict(entry.decode().split("=", 1) for entry in entries if entry)

    @property
    def executable(self):
        return os.readlink(self._folder / "exe")

    @property
    def user(self):
        return self._folder.stat().st_uid

    @property
    def children(self):
        return [folder.name for folder in pathlib.Path("/proc").glob("[0-9]*")
                if _parent(folder) == str(self.pid)]
