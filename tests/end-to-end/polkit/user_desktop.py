"""The desktop of the ordinary user: an X server that only a cookie opens, a session bus, and the
accessibility bus that the desktop names on its display."""

import os
import secrets
import shutil
import subprocess

import private_machine


class UserDesktop:
    """Starts on construction; lasts as long as the machine."""

    def __init__(self, machine):
        home = machine.home(private_machine.USER)
        self.cookies = home / ".Xauthority"
        self.display = ":0"  # the machine has no other yet
        self.start_server(self.display, self.cookies)
        runtime = private_machine.FOLDER / "runtime"
        runtime.mkdir(mode=0o700)
        shutil.chown(runtime, private_machine.USER)
        self.variables = {"DISPLAY": self.display, "XAUTHORITY": str(self.cookies),
                          "XDG_RUNTIME_DIR": str(runtime)}
        self.variables["DBUS_SESSION_BUS_ADDRESS"] = self._start_session_bus()
        self._join()

    @staticmethod
    def start_server(display, cookies):
        """Starts an X server of the user's, whose cookie goes into the file; `display` has to be
        the next one that is free."""
        private_machine.as_user(
            ["xauth", "-q", "-f", str(cookies), "add", display, ".", secrets.token_hex(16)],
            stderr=subprocess.DEVNULL).wait()
        read_end, write_end = os.pipe()
        private_machine.as_user(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24", "-nolisten",
             "tcp", "-noreset", "-auth", str(cookies)],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            assert pipe.readline().strip() == display.lstrip(":")

    def _start_session_bus(self):
        read_end, write_end = os.pipe()
        private_machine.as_user(
            ["dbus-daemon", "--session", "--nofork", f"--print-address={write_end}"],
            env=private_machine.user_environment(**self.variables), pass_fds=[write_end],
            stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            return pipe.readline().strip()

    def _join(self):
        """Lets this process, which is root's, see the desktop as its screen reader would."""
        asked = private_machine.as_user(
            ["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
             "/org/a11y/bus", "--method", "org.a11y.Bus.GetAddress"],
            env=private_machine.user_environment(**self.variables), stdout=subprocess.PIPE,
            text=True)
        answer, _ = asked.communicate()
        os.environ["AT_SPI_BUS_ADDRESS"] = answer.split("'")[1]
        os.environ["DISPLAY"] = self.display
        os.environ["XAUTHORITY"] = str(self.cookies)
