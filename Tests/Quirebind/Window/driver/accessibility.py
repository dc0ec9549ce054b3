# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Reads the windows of a program through AT-SPI, as a screen reader does.

Speaks the bus protocol itself (org.a11y.atspi.*, as of at-spi2-core 2.46) over a connection of its
own: libatspi, and pyatspi above it, keep a cache that is only up to date once the events have been
handled, and one connection for the whole life of a process. Here every property is asked of the
program when it is read, so what is read was true at that moment.
"""

from typing import Any, Iterator, NamedTuple, Optional, Union

from gi.repository import Gio, GLib

from .geometry import Rect
from .waiting import NotYet

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
_COMPONENT = "org.a11y.atspi.Component"
_TEXT = "org.a11y.atspi.Text"
_EDITABLE_TEXT = "org.a11y.atspi.EditableText"
_ROOT = "/org/a11y/atspi/accessible/root"
_SCREEN_COORDINATES = 0
_CALL_TIMEOUT = 10_000  # ms; a window that takes longer to answer hangs

# The bits of an accessible's state, AtspiStateType.
_STATES = {
    1: "active", 3: "busy", 4: "checked", 7: "editable", 8: "enabled", 11: "focusable",
    12: "focused", 16: "modal", 20: "pressed", 22: "selectable", 23: "selected", 24: "sensitive",
    25: "showing", 30: "visible", 39: "default", 43: "read-only",
}

_ITEMS = ("list item", "table cell", "tree item")


class Gone(NotYet):
    """The accessible is no longer there: its window closed, or the list it was in changed."""


class AccessibilityBus:
    """A connection to the accessibility bus of a desktop; starts that bus where it is not running.

    `scale` is the size of a program's pixel in pixels of the screen. Trap: Qt 6.4 reports where
    things are in its own pixels, also where the desktop has it draw everything larger.
    """

    def __init__(self, session_bus: str, scale: float = 1.0) -> None:
        self.scale = scale
        session = _connect(session_bus)
        try:
            address = session.call_sync(
                "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                Gio.DBusCallFlags.NONE, _CALL_TIMEOUT, None).unpack()[0]
        finally:
            session.close_sync(None)
        self.address: str = address
        self._connection = _connect(address)
        # The registry is activated by the first call; a program looks for it when it starts.
        self.call("org.a11y.atspi.Registry", _ROOT, _ACCESSIBLE, "GetChildren")

    def close(self) -> None:
        """Ends the connection."""
        if not self._connection.is_closed():
            self._connection.close_sync(None)

    def call(self, owner: str, path: str, interface: str, method: str,
             arguments: Optional[GLib.Variant] = None) -> Any:
        """Calls a method; returns its results as a tuple. Raises Gone where it is not there."""
        try:
            return self._connection.call_sync(owner, path, interface, method, arguments, None,
                                              Gio.DBusCallFlags.NONE, _CALL_TIMEOUT, None).unpack()
        except GLib.Error as error:
            if error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT):
                raise AssertionError(f"the program does not answer {method}: it hangs") from error
            raise Gone(f"{method}: {error.message}") from error

    def application(self, process_id: int) -> "Accessible":
        """The accessible of the program with this process id. Raises Gone while it has none."""
        children = self.call("org.a11y.atspi.Registry", _ROOT, _ACCESSIBLE, "GetChildren")[0]
        for owner, path in children:
            try:
                found = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                                  GLib.Variant("(s)", (owner,)))[0]
            except Gone:  # one that has ended a moment ago
                continue
            if found == process_id:
                return Accessible(self, owner, path)
        raise Gone(f"no program with the process id {process_id} is on the accessibility bus")


class Node(NamedTuple):
    """What an accessible said of itself at one moment."""

    accessible: "Accessible"
    depth: int
    role: str
    name: str
    states: frozenset[str]


class Accessible:
    """Something in a window: a button, a label, a row of a list. It stands for the thing, nothing
    of it is remembered; whatever is asked of one that has gone raises Gone."""

    def __init__(self, bus: AccessibilityBus, owner: str, path: str) -> None:
        self._bus = bus
        self._owner = owner
        self._path = path

    def __eq__(self, other: object) -> bool:
        return (isinstance(other, Accessible) and self._owner == other._owner
                and self._path == other._path)

    def __hash__(self) -> int:
        return hash((self._owner, self._path))

    def __repr__(self) -> str:
        try:
            return f"{self.role} “{self.name}”"
        except Gone:
            return f"something that has gone ({self._path})"

    # What it is.

    @property
    def role(self) -> str:
        """For example "push button", "label", "list", "list item", "frame", "dialog"."""
        return self._call(_ACCESSIBLE, "GetRoleName")[0]

    @property
    def name(self) -> str:
        return self._property(_ACCESSIBLE, "Name")

    @property
    def description(self) -> str:
        return self._property(_ACCESSIBLE, "Description")

    @property
    def states(self) -> frozenset[str]:
        low, high = self._call(_ACCESSIBLE, "GetState")[0]
        bits = low | high << 32
        return frozenset(name for bit, name in _STATES.items() if bits >> bit & 1)

    @property
    def showing(self) -> bool:
        return "showing" in self.states

    @property
    def enabled(self) -> bool:
        """Whether the user can use it: neither it nor anything around it is greyed out."""
        return {"enabled", "sensitive"} <= self.states

    @property
    def focused(self) -> bool:
        return "focused" in self.states

    @property
    def selected(self) -> bool:
        return "selected" in self.states

    @property
    def extents(self) -> Rect:
        """Where it is on the screen."""
        extents = self._call(_COMPONENT, "GetExtents",
                             GLib.Variant("(u)", (_SCREEN_COORDINATES,)))[0]
        return Rect(*(round(value * self._bus.scale) for value in extents))

    @property
    def text(self) -> str:
        """What a field contains."""
        return self._call(_TEXT, "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def set_text(self, text: str) -> None:
        """Replaces what a field contains, as dictation does; for what no key can type."""
        self._call(_EDITABLE_TEXT, "SetTextContents", GLib.Variant("(s)", (text,)))

    def actions(self) -> list[str]:
        """What can be done to it, such as "Press" and "SetFocus"."""
        return [action[0] for action in self._call(_ACTION, "GetActions")[0]]

    def press(self, action: str = "Press") -> None:
        """Does that to it, as a screen reader's user does; a click is Input.click."""
        self._call(_ACTION, "DoAction", GLib.Variant("(i)", (self.actions().index(action),)))

    # What is in it.

    @property
    def parent(self) -> "Accessible":
        return Accessible(self._bus, *self._property(_ACCESSIBLE, "Parent"))

    @property
    def children(self) -> list["Accessible"]:
        return [Accessible(self._bus, *child) for child in
                self._call(_ACCESSIBLE, "GetChildren")[0]]

    def walk(self, hidden: bool = False, depth: int = 0) -> Iterator[Node]:
        """This and all in it, in the order in which a screen reader comes by; what does not show
        only where `hidden` says so."""
        node = Node(self, depth, self.role, self.name, self.states)
        # Applications have no state, and what is in a hidden widget is hidden with it.
        if not hidden and node.role != "application" and "showing" not in node.states:
            return
        yield node
        for child in self.children:
            yield from child.walk(hidden, depth + 1)

    def find_all(self, role: Optional[str] = None, name: Optional[str] = None,
                 state: Union[str, tuple[str, ...]] = (), hidden: bool = False
                 ) -> list["Accessible"]:
        """All in it with this role, name and state, in order."""
        states = {state} if isinstance(state, str) else set(state)
        return [node.accessible for node in self.walk(hidden)
                if role in (None, node.role) and name in (None, node.name)
                and states <= node.states]

    def find(self, role: Optional[str] = None, name: Optional[str] = None,
             state: Union[str, tuple[str, ...]] = (), hidden: bool = False) -> "Accessible":
        """The first of `find_all`. Raises Gone where there is none: wait_for looks again."""
        for found in self.find_all(role, name, state, hidden):
            return found
        raise Gone(f"there is no {role or 'accessible'} “{name or ''}” {state or ''}".rstrip())

    def texts(self) -> list[str]:
        """The texts of all labels that show, in order."""
        return [node.name for node in self.walk() if node.role == "label" and node.name]

    def focus(self) -> Optional["Accessible"]:
        """What has the keyboard focus in it. Of a list that has it, it is the current row; a list
        that has not, has a current row that says it were focused, too. So does, in a widget that
        has it, a part that could not have it itself."""
        found = self.find_all(state=("focused", "focusable"))
        for accessible in reversed(found):
            if accessible.role not in _ITEMS or accessible.parent in found:
                return accessible
        return None

    def described(self) -> str:
        """All that shows, a line each, to be read by people."""
        return "\n".join(f"{'  ' * node.depth}{node.role} “{node.name}” "
                         f"{' '.join(sorted(node.states - {'showing', 'visible', 'sensitive'}))}"
                         for node in self.walk())

    def _call(self, interface: str, method: str, arguments: Optional[GLib.Variant] = None) -> Any:
        return self._bus.call(self._owner, self._path, interface, method, arguments)

    def _property(self, interface: str, name: str) -> Any:
        return self._call("org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (interface, name)))[0]


def _connect(address: str) -> Gio.DBusConnection:
    return Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
