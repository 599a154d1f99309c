"""Authentication agents of the ordinary user: who answers when polkit asks."""

import contextlib
import os
import pathlib
import pty
import subprocess
import sys
import termios
import threading

import private_machine
from desktop import wait_for

PROMPT = b"Password: "
# Only who is in the session may register for it.
_SHELL_WAITING_FOR_SESSION = 'read -r -u "$0" _; exec "$@"'


def _python(script):
    """The command of a script beside this one, whose text is read now: the ordinary user may not be
    able to read it, and the machine may soon cover its folder."""
    text = pathlib.Path(__file__).with_name(script).read_text(encoding="utf-8")
    return [sys.executable, "-c", text]


SESSION_TEXT_AGENT = _python("session_text_agent.py")
DISMISSING_AGENT = _python("dismissing_agent.py")


class SessionAgent:
    """The agent of the user's session, on a terminal, where every question gets the same answer."""

    _REGISTERED = "registered"

    def __init__(self, machine, process, password=private_machine.PASSWORD):
        self.text = b""
        self._password = password
        self._terminal, terminal = pty.openpty()
        registered, notify = os.pipe()
        gate, opener = os.pipe()
        self._agent = private_machine.as_user(
            ["bash", "-c", _SHELL_WAITING_FOR_SESSION, str(gate),
             "setsid", "--ctty", *self._command(process, str(notify))],
            stdin=terminal, stdout=terminal, stderr=terminal, pass_fds=[notify, gate])
        machine.put_into_session(self._agent.pid)
        os.write(opener, b"go\n")
        for descriptor in (terminal, notify, gate, opener):
            os.close(descriptor)
        with os.fdopen(registered) as told:
            assert told.read() == self._REGISTERED
        self._reader = threading.Thread(target=self._answer, daemon=True)
        self._reader.start()

    @property
    def questions(self):
        return self.text.count(b"AUTHENTICATING FOR")

    def end(self):
        self._agent.terminate()
        self._agent.wait()
        self._reader.join()

    def _command(self, _process, descriptor):
        return [*SESSION_TEXT_AGENT, private_machine.SESSION, descriptor]

    def _answer(self):
        answered = 0
        with contextlib.suppress(OSError):  # the terminal's end
            while part := os.read(self._terminal, 4096):
                self.text += part
                while answered < self.text.count(PROMPT):
                    answered += 1
                    wait_for(self._is_hidden, "hidden input")
                    os.write(self._terminal, self._password.encode() + b"\n")
        os.close(self._terminal)

    def _is_hidden(self):
        """What is typed before the agent has switched the echo off is thrown away."""
        return not termios.tcgetattr(self._terminal)[3] & termios.ECHO


class ProcessAgent(SessionAgent):
    """The system's own text agent, for the one process."""

    _REGISTERED = ""  # it closes its descriptor without a word

    def _command(self, process, descriptor):
        return ["pkttyagent", "--process", str(process), "--notify-fd", descriptor]


class DismissingAgent:
    """A dialog that the user closes at once."""

    def __init__(self, _machine, process):
        self._agent = private_machine.as_user(
            [*DISMISSING_AGENT, str(process)], stdout=subprocess.PIPE, text=True)
        assert self._agent.stdout.readline() == "registered\n"

    def end(self):
        self._agent.terminate()
        self._agent.communicate()
