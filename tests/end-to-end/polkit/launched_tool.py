"""One launch of the installed tool by the ordinary user, and what became of it."""

import subprocess

import private_machine
from desktop import PATIENCE

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
            return self._process.wait(timeout=PATIENCE), self.errors
        finally:
            if self.agent:
                self.agent.end()

    @property
    def errors(self):
        return self._errors.read_text()
