# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A virtual desktop: a screen, a window manager, a session bus and the accessibility bus, all
private to one test class, so that tests run beside each other and beside the person at the
machine."""

import atexit
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import uuid
from pathlib import Path
from typing import Mapping, Optional, Sequence, Union
from xml.sax.saxutils import escape

from . import processes
from .accessibility import AccessibilityBus
from .waiting import wait_for

# No key is bound but Alt+F4, no window is animated, and a click reaches the window under it. A
# window that opens gets the focus, as on every desktop.
_OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <resize><drawContents>yes</drawContents><popupShow>Never</popupShow></resize>
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
  </keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press">
        <action name="Focus"/><action name="Raise"/>
      </mousebind>
      <mousebind button="Right" action="Press">
        <action name="Focus"/><action name="Raise"/>
      </mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press">
        <action name="Focus"/><action name="Raise"/>
      </mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="BRCorner">
      <mousebind button="Left" action="Drag"><action name="Resize"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
  <applications/>
</openbox_config>
"""

# Only the accessibility bus can be activated here: with the machine's own service folders a test
# would launch the file manager or the portal that happen to be installed.
_SESSION_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{services}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
# What is first in the path of every program, so that none launches the browser or file manager of
# the machine: notes beside the home folder of the program what it was to open.
_OPENER = """#!/bin/sh
printf '%s\\n' "$@" >> "$HOME.opened"
"""
_ACCESSIBILITY_SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")

# What the environment of this process may hand on to programs; all else they get is said here.
_HANDED_ON = ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS",
              "ASAN_SYMBOLIZER_PATH", "LLVM_PROFILE_FILE", "LD_LIBRARY_PATH")
_TOOLS = ("Xvfb", "openbox", "dbus-daemon", "setpriv", "xdotool", "wmctrl", "xprop", "xwininfo",
          "import")


class Desktop:
    """A screen of `width` x `height` pixels, `dpi` dots an inch, from `with` to its end; programs draw
    everything `factor` times as large besides.

        with Desktop() as desktop:
            program = Program(desktop, "quirebind")

    The accessibility bus is spoken to directly (accessibility.py), not through pyatspi: that keeps
    one connection and a cache for the life of a process, while here a process may have one desktop
    after another and never reads what was true a moment ago.
    """

    tools: Sequence[str] = _TOOLS
    """What it needs of the machine."""

    def __init__(self, width: int = 1400, height: int = 1000, dpi: int = 96,
                 factor: int = 1) -> None:
        self.width = width
        self.height = height
        self.dpi = dpi
        self.factor = factor
        self.scale = dpi / 96 * factor
        self.mark = uuid.uuid4().hex
        self.display = ""
        self.session_bus = ""
        self._accessibility: Optional[AccessibilityBus] = None
        self._folder: Optional[Path] = None
        self._children: list["subprocess.Popen[bytes]"] = []
        self._guard: Optional["subprocess.Popen[bytes]"] = None

    def __enter__(self) -> "Desktop":
        return self.start()

    def __exit__(self, *_: object) -> None:
        self.stop()

    def start(self) -> "Desktop":
        """Starts all that a desktop consists of; returns when programs can be started."""
        missing = [tool for tool in self.tools if shutil.which(tool) is None]
        if missing:
            raise RuntimeError("needed, but not installed: " + ", ".join(missing))
        processes.adopt_orphans()
        atexit.register(self.stop)
        _exit_on_termination()
        self._guard = processes.guard(self.mark)
        try:
            # Short, because the name of a socket in there must stay below 108 bytes.
            self._folder = Path(tempfile.mkdtemp(prefix="quirebind-window-"))
            self._make_opener()
            self._start_screen()
            self._start_session_bus()
            # Trap: the accessibility bus has to be asked for *before* a program starts. Qt asks for
            # its address once, and does not wait for one that is only just being activated.
            self._accessibility = AccessibilityBus(self.session_bus, self.scale)
            self._start_window_manager()
        except BaseException:
            self.stop()
            raise
        return self

    def stop(self) -> None:
        """Ends everything that was started on this desktop. May be called twice."""
        atexit.unregister(self.stop)
        if self._accessibility is not None:
            self._accessibility.close()
            self._accessibility = None
        # All at once, and not the bus first: what it has activated ends with it, and would be gone
        # from the list of those to be reaped.
        processes.end_marked(self.mark)
        while self._children:
            processes.end(self._children.pop())
        if self._guard is not None:
            self._guard.communicate()  # closes its standard input and waits
            self._guard = None
        if self._folder is not None:
            shutil.rmtree(self._folder, ignore_errors=True)
            self._folder = None

    @property
    def folder(self) -> Path:
        """A folder that goes with the desktop."""
        assert self._folder is not None, "the desktop is not started"
        return self._folder

    @property
    def accessibility(self) -> AccessibilityBus:
        """What a screen reader on this desktop would see."""
        assert self._accessibility is not None, "the desktop is not started"
        return self._accessibility

    def new_home(self) -> Path:
        """A fresh, empty home folder."""
        return Path(tempfile.mkdtemp(prefix="home-", dir=self.folder))

    def environment(self, home: Path, extra: Optional[Mapping[str, str]] = None) -> dict[str, str]:
        """The whole environment of a program whose home is `home`. Nothing of the environment that
        the test runs in shines through: a theme, a locale or a session of the person there."""
        runtime = self.folder / "runtime" / home.name
        runtime.mkdir(mode=0o700, parents=True, exist_ok=True)
        environment = {name: os.environ[name] for name in _HANDED_ON if name in os.environ}
        environment.update({
            processes.MARK: self.mark,
            "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}",
            "HOME": str(home),
            "XDG_RUNTIME_DIR": str(runtime),
            "LC_ALL": "C.UTF-8",
            "DISPLAY": self.display,
            "GSETTINGS_BACKEND": "memory",
        })
        if self.factor != 1:
            environment["QT_SCALE_FACTOR"] = str(self.factor)
        if self.session_bus:
            environment["DBUS_SESSION_BUS_ADDRESS"] = self.session_bus
        environment.update(extra or {})
        return environment

    def start_process(self, arguments: Sequence[Union[str, bytes, Path]],
                      environment: Optional[Mapping[str, str]] = None,
                      **options: object) -> "subprocess.Popen[bytes]":
        """Starts a process that ends with the desktop, unless the caller ends it sooner."""
        if environment is None:
            environment = self._daemon_environment()
        process = processes.start(arguments, environment, **options)  # type: ignore[arg-type]
        self._children.append(process)
        return process

    def end_process(self, process: "subprocess.Popen[bytes]") -> int:
        """Ends a process that `start_process` started; returns its exit code."""
        if process in self._children:
            self._children.remove(process)
        return processes.end(process)

    def active_window(self) -> int:
        """The X id of the window with the focus, 0 where there is none."""
        answer = self.run("xprop", "-root", "_NET_ACTIVE_WINDOW").decode()
        found = re.search(r"0x[0-9a-f]+", answer)
        return int(found[0], 16) if found else 0

    def activate(self, window: int) -> None:
        """Gives a window the focus, as a click into the task bar does; where a dialog of it is
        open, the dialog gets it."""
        self.run("wmctrl", "-ia", hex(window))

    def run(self, *arguments: str, timeout: float = 20.0) -> bytes:
        """Runs a tool on this desktop and returns what it prints."""
        result = subprocess.run(arguments, env=self._daemon_environment(), capture_output=True,
                                timeout=timeout, check=False)
        if result.returncode != 0:
            raise RuntimeError(f"{' '.join(arguments)}: {result.returncode}, "
                               f"{result.stderr.decode(errors='replace').strip()}")
        return result.stdout

    # The parts. Daemons have a home of their own, so that whatever is found in a program's home was
    # left there by the program.

    def _make_opener(self) -> None:
        opener = self.folder / "bin" / "xdg-open"
        opener.parent.mkdir()
        opener.write_text(_OPENER)
        opener.chmod(0o755)

    def _daemon_environment(self) -> dict[str, str]:
        home = self.folder / "daemons"
        home.mkdir(mode=0o700, exist_ok=True)
        return self.environment(home)

    def _start_daemon(self, arguments: Sequence[str], pass_fds: Sequence[int] = ()
                      ) -> "subprocess.Popen[bytes]":
        with open(self.folder / f"{arguments[0]}.log", "wb") as log:
            return self.start_process(arguments, stdout=log, stderr=log, pass_fds=pass_fds)

    def _start_and_read(self, arguments: Sequence[str], option: str) -> str:
        """Starts a daemon that writes a line to the descriptor that `option` names, once it is
        ready."""
        reading, writing = os.pipe()
        with open(reading, "rb") as answers:
            self._start_daemon([*arguments, option.format(writing)], pass_fds=[writing])
            os.close(writing)
            # Trap: the X server writes the number and the end of the line in two pieces.
            line = answers.readline().decode().strip()
        if not line:
            log = (self.folder / f"{arguments[0]}.log").read_text(errors="replace")
            raise RuntimeError(f"{arguments[0]} did not start: {log}")
        return line

    def _start_screen(self) -> None:
        # Without -noreset the server would start anew whenever its last client goes away.
        number = self._start_and_read(
            ["Xvfb", "-screen", "0", f"{self.width}x{self.height}x24", "-dpi", str(self.dpi),
             "-noreset", "-nolisten", "tcp", "-displayfd"], "{}")
        self.display = f":{number}"
        # Trap: Qt does not take the number of dots from the server but from this resource, as
        # desktops set it where the user has chosen a scale.
        self.run("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s",
                 "-set", "RESOURCE_MANAGER", f"Xft.dpi:\t{self.dpi}\n")

    def _start_session_bus(self) -> None:
        services = self.folder / "services"
        services.mkdir()
        shutil.copy(_ACCESSIBILITY_SERVICE, services)
        configuration = self.folder / "session.conf"
        configuration.write_text(_SESSION_BUS.format(
            socket=escape(str(self.folder / "bus")), services=escape(str(services))))
        self.session_bus = self._start_and_read(
            ["dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
             f"--config-file={configuration}"], "--print-address={}")

    def _start_window_manager(self) -> None:
        configuration = self.folder / "openbox.xml"
        configuration.write_text(_OPENBOX)
        self._start_daemon(["openbox", "--sm-disable", "--config-file", str(configuration)])
        # Trap: _NET_SUPPORTING_WM_CHECK, which says that there is a window manager, is there before
        # it manages anything. The list of its windows comes last.
        wait_for(lambda: b"window id" in self.run("xprop", "-root", "_NET_CLIENT_LIST"),
                 message="the window manager has started")


def _exit_on_termination() -> None:
    """Makes SIGTERM end this process as an exit does, so that desktops are stopped."""
    if signal.getsignal(signal.SIGTERM) is signal.SIG_DFL:
        signal.signal(signal.SIGTERM, lambda number, _: sys.exit(128 + number))
