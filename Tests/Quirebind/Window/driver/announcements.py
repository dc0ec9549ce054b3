# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What programs tell assistive technology of their own accord."""

from typing import Any

from gi.repository import Gio, GLib

from .accessibility import Accessible, Gone
from .desktop import Desktop

_EVENTS = "org.a11y.atspi.Event.Object"
_REGISTRY = "org.a11y.atspi.Registry"


class Announcements:
    """Listens on a desktop from here on. The only way to a popup menu, which Qt 6.4 does not list
    among the windows of a program: it is known from what it says when it opens."""

    def __init__(self, desktop: Desktop) -> None:
        self._bus = desktop.accessibility
        self._shown: list[Accessible] = []
        self._connection = Gio.DBusConnection.new_for_address_sync(
            self._bus.address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._connection.signal_subscribe(None, _EVENTS, "StateChanged", None, "showing",
                                          Gio.DBusSignalFlags.NONE, self._state_changed)
        # Programs tell only what somebody has asked for.
        self._connection.call_sync(
            _REGISTRY, "/org/a11y/atspi/registry", _REGISTRY, "RegisterEvent",
            GLib.Variant("(sass)", ("object:state-changed:showing", [], "")), None,
            Gio.DBusCallFlags.NONE, -1, None)

    def menu(self) -> Accessible:
        """The menu that opened last and still shows. Raises Gone where there is none."""
        while GLib.MainContext.default().iteration(False):
            pass
        for shown in reversed(self._shown):
            try:
                if shown.role == "popup menu" and shown.showing:
                    return shown
            except Gone:
                continue
        raise Gone("no menu shows")

    def end(self) -> None:
        """Stops listening."""
        self._connection.close_sync(None)

    def _state_changed(self, _connection: Any, sender: str, path: str, _interface: str,
                       _signal: str, arguments: GLib.Variant) -> None:
        if arguments[1]:
            self._shown.append(Accessible(self._bus, sender, path))
