"""A machine of the test's own, as far as authorization goes: its users, its installed tool, its
system bus and polkit, and its user's desktop, all in namespaces that vanish with the test.

Call `enter()` first; it starts the script anew inside. Nothing outside can be changed but the
build, which the installation writes to, and every process ends with the script.
"""

import contextlib
import json
import os
import pathlib
import pwd
import shutil
import subprocess
import sys

import relaunched_tool
from desktop import wait_for

FOLDER = pathlib.Path("/run/machine")  # on a file system of the machine's own
USER, ADMINISTRATOR, PASSWORD = "tavuser", "tavadmin", "correct horse"
SESSION = "1"  # of the user, as the login manager counts
ACTION = "com.pelora.tavconfiguration.edit"

_INSIDE = "TAV_PRIVATE_MACHINE"


def enter():
    """Starts the script anew with its own mounts, processes, network and shared memory."""
    os.umask(0o022)  # not the caller's: the users read what root makes
    if _INSIDE not in os.environ:
        os.environ[_INSIDE] = "yes"
        os.execvp("unshare", [
            "unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "--net",
            "--ipc", sys.executable, "-B", *sys.argv])
    runner = os.fork()
    if runner != 0:
        _reap_until_end_of(runner)


def _reap_until_end_of(runner):
    """The first process of a machine is the one that takes in orphans."""
    while True:
        process, status = os.wait()
        if process == runner:
            os._exit(os.waitstatus_to_exitcode(status))


class Machine:
    """Installs the tool of a build under `prefix` (a name below FOLDER) on a fresh machine."""

    def __init__(self, cmake, build, prefix="prefix"):
        _mount("-t", "tmpfs", "-o", "mode=0755", "none", "/run")
        for folder in ("dbus", "systemd/sessions", "systemd/users", "systemd/seats",
                       "systemd/machines"):
            pathlib.Path("/run", folder).mkdir(parents=True)
        FOLDER.mkdir()
        _forbid_writing_outside(build)
        self.prefix = FOLDER / prefix
        self.program_folder = self.prefix / "lib/tavconfiguration"
        self.program = self.program_folder / "TavConfiguration"
        self._install(cmake, build)
        self.grant_probe, self.close_window, self.admit_user, self.fake_elevator = (
            _executable_copy(pathlib.Path(build, "tests", name))
            for name in ("PolkitGrantProbe", "CloseWindow", "AdmitUser", "FakeElevator"))
        self._make_users()
        self._leave_environments_empty()
        self._make_login_session()
        self._make_folders_private()

    def _install(self, cmake, build):
        """Under the component that all belongs to, for the sake of the list that an installation
        leaves in the build: it has another name then than the one of the build's owner."""
        component = "Unspecified"
        subprocess.run(
            [cmake, "--install", build, "--prefix", self.prefix, "--component", component],
            check=True, stdout=subprocess.DEVNULL)
        pathlib.Path(build, f"install_manifest_{component}.txt").unlink(missing_ok=True)

    def _make_users(self):
        copies = {name: pathlib.Path("/etc", name).read_text() for name in
                  ("passwd", "shadow", "group")}
        copies["passwd"] = copies["passwd"].replace(":/root:", f":{FOLDER}/home/root:", 1)
        encrypted = subprocess.run(["openssl", "passwd", "-6", PASSWORD], check=True,
                                   capture_output=True, text=True).stdout.strip()
        for number, name in ((12345, USER), (12346, ADMINISTRATOR)):
            home = FOLDER / "home" / name
            copies["passwd"] += f"{name}:x:{number}:{number}:{name}:{home}:/bin/bash\n"
            copies["shadow"] += f"{name}:{encrypted}:19000:0:99999:7:::\n"
            copies["group"] += f"{name}:x:{number}:\n"
        for name, text in copies.items():
            copy = FOLDER / name
            copy.touch(mode=0o600 if name == "shadow" else 0o644)
            copy.write_text(text)
            _mount("--bind", copy, f"/etc/{name}")
        for name in ("root", USER, ADMINISTRATOR):
            home = FOLDER / "home" / name
            home.mkdir(parents=True)
            shutil.chown(home, name, name)

    def _leave_environments_empty(self):
        """Whoever gets another user's rights gets the variables of these files too."""
        empty = FOLDER / "empty"
        empty.touch()
        for path in ("/etc/environment", "/etc/default/locale"):
            if os.path.exists(path):
                _mount("--bind", empty, path)

    def _make_login_session(self):
        self.describe_session()
        number = pwd.getpwnam(USER).pw_uid
        scope = f"/user.slice/user-{number}.slice/session-{SESSION}.scope"
        self._session = FOLDER / "session"
        self._session.write_text(f"1:name=systemd:{scope}\n0::{scope}\n")

    def describe_session(self, state="active", seat="SEAT=seat0\n"):
        """What the login manager would say of the user, who sits before the machine, or whose
        session is in the background ("online"), or comes from afar (no seat)."""
        number = pwd.getpwnam(USER).pw_uid
        for path, text in (
                (f"sessions/{SESSION}",
                 f"UID={number}\nUSER={USER}\nACTIVE={int(state == 'active')}\nSTATE={state}\n"
                 f"REMOTE={int(not seat)}\nTYPE=x11\nCLASS=user\n{seat}"),
                (f"users/{number}", f"NAME={USER}\nSTATE={state}\nDISPLAY={SESSION}\n"),
                ("seats/seat0", f"IS_SEAT0=1\nACTIVE=1\nACTIVE_UID={number}\n")):
            pathlib.Path("/run/systemd", path).write_text(text)

    def put_into_session(self, process):
        """The login manager finds a process's session by its control group."""
        _mount("--bind", self._session, f"/proc/{process}/cgroup")

    def _make_folders_private(self):
        self.rules = _private_copy("/etc/polkit-1/rules.d", [])
        self.actions = _private_copy("/usr/share/polkit-1/actions",
                                     ["org.freedesktop.policykit.policy"])
        # No service starts by being asked for.
        _private_copy("/usr/share/dbus-1/system-services", [])
        shutil.copy(self.prefix / "share/polkit-1/actions/com.pelora.tavconfiguration.policy",
                    self.actions)
        for folder, mode in (("/var/lib", "0755"), ("/tmp", "1777")):
            _mount("-t", "tmpfs", "-o", f"mode={mode}", "none", folder)

    @property
    def settings_folder(self):
        return pathlib.Path("/var/lib/Pelora/TavConfiguration")

    def home(self, user):
        return FOLDER / "home" / user

    def log_folder(self, user=USER):
        return self.home(user) / ".local/share/Pelora/TavConfiguration/Logs"

    def write_beside_program(self, name, text):
        (self.program_folder / name).write_text(text)

    @contextlib.contextmanager
    def system_bus(self):
        """The system bus, without any service."""
        bus = subprocess.Popen(["dbus-daemon", "--system", "--nofork", "--nopidfile"],
                               stderr=subprocess.DEVNULL)
        wait_for(lambda: _has_owner("org.freedesktop.DBus"), "system bus")
        try:
            yield
        finally:
            _end(bus)
            pathlib.Path("/run/dbus/system_bus_socket").unlink(missing_ok=True)

    @contextlib.contextmanager
    def polkit(self, rule=""):
        """The system bus with polkit on it; `rule` is what a rule does about the tool's action."""
        (self.rules / "10-test.rules").write_text(f"""
            polkit.addAdminRule(function() {{ return ["unix-user:{ADMINISTRATOR}"]; }});
            polkit.addRule(function(action, subject) {{
                if (action.id == "{ACTION}" && subject.user == "{USER}") {{ {rule} }}
            }});""")
        with self.system_bus():
            daemon = subprocess.Popen(["/usr/lib/polkit-1/polkitd", "--no-debug"],
                                      stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            wait_for(lambda: _has_owner("org.freedesktop.PolicyKit1"), "polkit daemon")
            try:
                yield
            finally:
                _end(daemon)

    @contextlib.contextmanager
    def hidden_processes(self):
        """Users see their own processes only, as a hardened system has it; polkit sees all."""
        group = pwd.getpwnam("polkitd").pw_gid
        _mount("-o", f"remount,hidepid=2,gid={group}", "/proc")
        try:
            yield
        finally:
            _mount("-o", "remount,hidepid=0", "/proc")

    @contextlib.contextmanager
    def calls_of_polkit(self):
        """What is said to polkit on the bus, as the text of a file that grows."""
        record = FOLDER / "calls-of-polkit"
        with open(record, "w", encoding="utf-8") as stream:
            monitor = subprocess.Popen(
                ["dbus-monitor", "--system", "interface='org.freedesktop.PolicyKit1.Authority'"],
                stdout=stream)
        wait_for(record.read_text, "monitor of the bus")
        try:
            yield record
        finally:
            _end(monitor)

    def elevated_process(self):
        """The process id of the tool's instance that root runs; nothing when there is none."""
        return relaunched_tool.find(self.program)


def user_environment(**variables):
    """What an ordinary user's shell gives a program, and `variables` added."""
    account = pwd.getpwnam(USER)
    return {"HOME": account.pw_dir, "USER": USER, "LOGNAME": USER, "SHELL": account.pw_shell,
            "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "LANGUAGE": "en", **variables}


def as_user(command, **options):
    account = pwd.getpwnam(USER)
    return subprocess.Popen(command, user=account.pw_uid, group=account.pw_gid, extra_groups=[],
                            **options)


def _mount(*arguments):
    subprocess.run(["mount", *map(str, arguments)], check=True)


def _forbid_writing_outside(build):
    """All runs as root: what is mounted by now is read-only, but for the build and the folders that
    the system itself fills."""
    _mount("-t", "tmpfs", "-o", "mode=1777", "none", "/dev/shm")
    _mount("--bind", build, build)
    listed = subprocess.run(["findmnt", "--json", "--list", "--output", "TARGET"], check=True,
                            capture_output=True, text=True).stdout
    kept = [pathlib.Path(path).resolve() for path in ("/dev", "/proc", "/run", "/sys", build)]
    for mounted in json.loads(listed)["filesystems"]:
        folder = pathlib.Path(mounted["target"])
        if not any(folder.is_relative_to(path) for path in kept):
            _mount("-o", "remount,bind,ro", folder)


def _executable_copy(program):
    """For all users, whoever may execute the original."""
    copy = pathlib.Path(shutil.copyfile(program, FOLDER / program.name))
    copy.chmod(0o755)
    return copy


def _private_copy(folder, kept):
    """Covers a folder with one that holds the kept files only; returns where it can be filled."""
    copy = FOLDER / folder.replace("/", "_")
    copy.mkdir()
    for name in kept:
        shutil.copy(pathlib.Path(folder, name), copy)
    _mount("--bind", copy, folder)
    return copy


def _has_owner(name):
    answer = subprocess.run(
        ["gdbus", "call", "--system", "--dest", "org.freedesktop.DBus", "--object-path", "/",
         "--method", "org.freedesktop.DBus.NameHasOwner", name], capture_output=True, text=True)
    return answer.stdout.strip() == "(true,)"


def _end(process):
    process.terminate()
    process.wait()
