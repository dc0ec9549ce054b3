# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What programs tell assistive technology of their own accord."""

from typing import Any

from gi.repository import Gio, GLib

from .accessibility import Accessible, Gone
from .desktop import Desktop

_OBJECT_EVENTS = "org.a11y.atspi.Event.Object"
_WINDOW_EVENTS = "org.a11y.atspi.Event.Window"
_REGISTRY = "org.a11y.atspi.Registry"
_ASKED_FOR = ("object:state-changed:showing", "object:announcement", "window:activate")


class Announcements:
    """Listens on a desktop from here on: to what a screen reader would say though nobody asked. Also
    the only way to a popup menu, which Qt 6.4 does not list among the windows of a program: it is
    known from what it says when it opens."""

    def __init__(self, desktop: Desktop) -> None:
        self._bus = desktop.accessibility
        self._shown: list[Accessible] = []
        self._connection = Gio.DBusConnection.new_for_address_sync(
            self._bus.address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._heard: list[tuple[str, str]] = []
        for interface, signal, detail, handler in (
                (_OBJECT_EVENTS, "StateChanged", "showing", self._state_changed),
                (_OBJECT_EVENTS, "Announcement", None, self._announced),
                (_WINDOW_EVENTS, "Activate", None, self._activated)):
            self._connection.signal_subscribe(None, interface, signal, None, detail,
                                              Gio.DBusSignalFlags.NONE, handler)
        # Programs tell only what somebody has asked for.
        for event in _ASKED_FOR:
            self._connection.call_sync(
                _REGISTRY, "/org/a11y/atspi/registry", _REGISTRY, "RegisterEvent",
                GLib.Variant("(sass)", (event, [], "")), None, Gio.DBusCallFlags.NONE, -1, None)

    def menu(self) -> Accessible:
        """The menu that opened last and still shows. Raises Gone where there is none."""
        self._listen()
        for shown in reversed(self._shown):
            try:
                if shown.role == "popup menu" and shown.showing:
                    return shown
            except Gone:
                continue
        raise Gone("no menu shows")

    def heard(self) -> list[tuple[str, str]]:
        """What was told so far, in order: the role and the name of each window that became the one
        in use, of each progress bar and of each notification that appeared. An announcement without
        any widget is a notification, too."""
        self._listen()
        return list(self._heard)

    def end(self) -> None:
        """Stops listening."""
        self._connection.close_sync(None)

    def _state_changed(self, _connection: Any, sender: str, path: str, _interface: str,
                       _signal: str, arguments: GLib.Variant) -> None:
        if arguments[1]:
            self._shown.append(Accessible(self._bus, sender, path))
            self._note(self._shown[-1], ("notification", "progress bar"))

    def _announced(self, _connection: Any, _sender: str, _path: str, _interface: str, _signal: str,
                   arguments: GLib.Variant) -> None:
        self._heard.append(("notification", str(arguments[3])))

    def _activated(self, _connection: Any, sender: str, path: str, _interface: str, _signal: str,
                   _arguments: GLib.Variant) -> None:
        self._note(Accessible(self._bus, sender, path), ("frame", "dialog", "alert"))

    def _note(self, source: Accessible, roles: tuple[str, ...]) -> None:
        """Remembers what it is now: a moment later it may be called otherwise."""
        try:
            if source.role in roles:
                self._heard.append((source.role, source.name))
        except Gone:
            pass

    def _listen(self) -> None:
        while GLib.MainContext.default().iteration(False):
            pass
