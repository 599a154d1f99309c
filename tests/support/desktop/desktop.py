"""A private desktop for the real tool: a virtual display with a window manager, a session bus with
accessibility, and the tool driven through it as a screen reader would.

One desktop a process: the accessibility library binds to the first session bus that it meets.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from gi.repository import GLib

PATIENCE = 30.0  # seconds until a thing that must appear counts as missing
BLANK_PICTURE = 2000  # bytes: more than an empty screen takes, less than any window


def wait_for(condition, what):
    """Polls until `condition()` gives something true, and returns that."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"no {what} within {PATIENCE:.0f} s")


class Desktop:
    """Starts the display and the bus on entry, and ends both, with all that used them, on exit."""

    def __init__(self, screen="1280x1024x24"):
        self.folder = tempfile.mkdtemp(prefix="tav-desktop-")
        self._screen = screen
        self._processes = []

    def __enter__(self):
        self._forget_the_users_desktop()
        try:
            self._start_display()
            self._start_bus()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            try:
                process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    # Without a reset: one would come when the first client goes, and take others that just come.
    def _start_display(self):
        read_end, write_end = os.pipe()
        self._processes.append(subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", self._screen, "-nolisten", "tcp",
             "-noreset"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        os.environ["DISPLAY"] = ":" + number
        os.environ.pop("WAYLAND_DISPLAY", None)

    def _start_bus(self):
        os.environ["XDG_RUNTIME_DIR"] = self.folder
        os.chmod(self.folder, 0o700)
        bus = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self._processes.append(bus)
        with bus.stdout:
            address = bus.stdout.readline().strip()
        if not address:
            raise RuntimeError("the session bus did not start")
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = address
        os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    # The tool looks and tells as it does on this desktop, whatever the user's own has set.
    @staticmethod
    def _forget_the_users_desktop():
        others = {"AT_SPI_BUS_ADDRESS", "SESSION_MANAGER", "XDG_DATA_DIRS", "XDG_SESSION_TYPE"}
        for name in [*os.environ]:
            if name.startswith("QT_") or name in others:
                del os.environ[name]

    # Without one no window is ever active, and the keyboard reaches none.
    def _start_window_manager(self):
        self._processes.append(subprocess.Popen(
            ["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        wait_for(lambda: b"window id" in subprocess.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], stdout=subprocess.PIPE).stdout,
            "window manager")

    def launch(self, command, stderr=None, **variables):
        """Starts a program on this desktop; it is ended with the desktop at the latest. What it
        tells on its standard error is the application's `errors`, unless `stderr` is another. A
        variable that is None is left out of its environment."""
        environment = {name: str(value) for name, value in (os.environ | variables).items()
                       if value is not None}
        # A file, since the tool lets go of a pipe before all that its toolkit may have to tell.
        errors = pathlib.Path(self.folder, f"errors-{len(self._processes)}")
        with open(errors, "wb") as file:
            process = subprocess.Popen(
                command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                stderr=file if stderr is None else stderr, text=True)
        self._processes.append(process)
        return Application(process, errors)

    def type(self, text):
        """Types ASCII text through the display into whatever has the keyboard focus."""
        for character in text:
            self._press(ord(character))

    def key(self, name):
        """Presses and releases one key."""
        self._press({"Tab": 0xff09, "Return": 0xff0d, "Escape": 0xff1b}[name])

    def screenshot(self, path):
        """Keeps a picture of what shows, cut to its windows, once it has come to rest."""
        def at_rest():
            first, second = self._capture(), self._capture()
            return first if first == second and len(first) > BLANK_PICTURE else None
        pathlib.Path(path).write_bytes(wait_for(at_rest, "window to take a picture of"))

    @staticmethod
    def _capture():
        # Without dates in it, so that equal pictures are equal files.
        command = "import -window root png:- | convert png:- -trim +repage -strip " \
                  "-define png:exclude-chunks=date,time png:-"
        return subprocess.run(
            command, shell=True, check=True, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL).stdout

    @staticmethod
    def _press(symbol):
        atspi = _accessibility()
        atspi.generate_keyboard_event(symbol, None, atspi.KeySynthType.SYM)


def _accessibility():
    # Imported late: the library looks for the bus and the display as soon as it is loaded.
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi
    # Its own time-out, 0.8 s, takes a busy machine for a tool that hangs.
    Atspi.set_timeout(int(PATIENCE * 1000), -1)
    return Atspi


class Application:
    """A running program and its windows, found through accessibility."""

    def __init__(self, process, errors=os.devnull):
        self._atspi = _accessibility()
        self._errors = pathlib.Path(errors)
        self.process = process

    @property
    def errors(self):
        """What the program has told on its standard error so far."""
        return self._errors.read_text(encoding="utf-8")

    def window(self, title):
        """The window or dialog of that title, once it shows."""
        return wait_for(lambda: self._find_window(title), f"window '{title}'")

    def window_titles(self):
        return [window.name for window in self._windows()]

    def wait(self):
        """Waits for the program's end; returns its exit status and what it printed."""
        try:
            output, _ = self.process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the program did not end; windows: {self.window_titles()}")
        return self.process.returncode, output, self.errors

    def _find_window(self, title):
        if self.process.poll() is not None:
            raise AssertionError(
                f"the program ended with {self.process.returncode}: {self.errors}")
        return next((window for window in self._windows() if window.name == title), None)

    def _windows(self):
        while GLib.MainContext.default().iteration(False):
            pass
        self._atspi.get_desktop(0).clear_cache()
        windows = []
        for application in _children(self._atspi.get_desktop(0)):
            if application.get_process_id() == self.process.pid:
                windows += [Node(child, self._atspi) for child in _children(application)]
        return windows


class Node:
    """One control, or a window with its controls."""

    def __init__(self, accessible, atspi):
        self._accessible = accessible
        self._atspi = atspi

    @property
    def name(self):
        return self._accessible.get_name() or ""

    @property
    def role(self):
        return self._accessible.get_role_name()

    @property
    def description(self):
        return self._accessible.get_description() or ""

    @property
    def text(self):
        return self._atspi.Text.get_text(self._accessible, 0, -1)

    @property
    def enabled(self):
        return self._has(self._atspi.StateType.ENABLED)

    @property
    def checked(self):
        return self._has(self._atspi.StateType.CHECKED)

    @property
    def focused(self):
        return self._has(self._atspi.StateType.FOCUSED)

    @property
    def gone(self):
        """Whether the control or window is no more."""
        self._accessible.clear_cache()
        try:
            return self._has(self._atspi.StateType.DEFUNCT) or \
                not self._has(self._atspi.StateType.SHOWING)
        except GLib.Error:
            return True

    def descendants(self):
        for child in _children(self._accessible):
            node = Node(child, self._atspi)
            yield node
            yield from node.descendants()

    def find(self, role, name):
        """The one control of that role and name below this one."""
        matches = [node for node in self.descendants() if node.role == role and node.name == name]
        if len(matches) != 1:
            present = [(node.role, node.name) for node in self.descendants()]
            raise AssertionError(f"{len(matches)} controls are {role} '{name}' in {present}")
        return matches[0]

    def set_text(self, text):
        if not self._atspi.EditableText.set_text_contents(self._accessible, text):
            raise AssertionError(f"'{self.name}' takes no text")

    def insert_text(self, position, text):
        self._atspi.EditableText.insert_text(
            self._accessible, position, text, len(text.encode()))

    def delete_text(self, start, end):
        self._atspi.EditableText.delete_text(self._accessible, start, end)

    def press(self):
        """Does the control's first action, as a click would, without waiting for its effect."""
        if not self._atspi.Action.do_action(self._accessible, 0):
            raise AssertionError(f"'{self.name}' cannot be pressed")

    def focus(self):
        self._atspi.Component.grab_focus(self._accessible)

    def _has(self, state):
        return self._accessible.get_state_set().contains(state)


def _children(accessible):
    children = (accessible.get_child_at_index(i) for i in range(accessible.get_child_count()))
    return [child for child in children if child is not None]
