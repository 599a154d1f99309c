"""One launch of the installed tool by the ordinary user, and what became of it."""

import contextlib
import os
import pathlib
import signal
import subprocess

import private_machine

# The shell waits for a line, so that an agent can be there for the process that it becomes.
_WAITING_SHELL = 'read -r _; exec "$@"'


class LaunchedTool:
    """`start` is how the tool is called, `agent` makes the agent of its process, if any."""

    _launches = 0

    def __init__(self, machine, start, *arguments, agent=None, variables=None, folder="/"):
        LaunchedTool._launches += 1
        self._errors = private_machine.FOLDER / f"errors-{LaunchedTool._launches}"
        with open(self._errors, "wb") as errors:
            self._process = private_machine.as_user(
                ["bash", "-c", _WAITING_SHELL, "bash", str(start), *arguments],
                env=private_machine.user_environment(**(variables or {})), cwd=folder,
                stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=errors)
        machine.put_into_session(self._process.pid)
        self.agent = agent(machine, self._process.pid) if agent else None
        with self._process.stdin as gate:
            gate.write(b"go\n")

    def wait(self):
        """The exit status and what was told on standard error by then."""
        try:
            return self._process.wait(timeout=private_machine.PATIENCE), self.errors
        finally:
            if self.agent:
                self.agent.end()

    @property
    def errors(self):
        return self._errors.read_text()


class ElevatedTool:
    """The instance that root runs, as the drivers of windows want a process: an id and a poll."""

    def __init__(self, machine):
        self.pid = private_machine.wait_for(machine.elevated_process, "elevated process")

    def poll(self):
        return None if self._folder.exists() else 0

    def wait(self):
        private_machine.wait_for(lambda: not self._folder.exists(), "end of the elevated process")

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
        return (self._folder / f"task/{self.pid}/children").read_text().split()

    @property
    def _folder(self):
        return pathlib.Path("/proc", str(self.pid))
