# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The process behind desktop_services.py:

    serve_desktop.py file-manager|portal|documents answers|answers-after-SECONDS|refuses|hangs RECORD

writes a line of JSON to the file RECORD for each call, and for each line it is told on standard
input.
"""

import json
import os
import sys
from typing import Any, Callable

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

_APPEARANCE = "org.freedesktop.appearance"
_INTERFACE = "org.gnome.desktop.interface"
_FILE_TRANSFER = "org.freedesktop.portal.FileTransfer"
_OPEN_URI = "org.freedesktop.portal.OpenURI"
_REQUEST = "org.freedesktop.portal.Request"
_SETTINGS = "org.freedesktop.portal.Settings"


class Service(dbus.service.Object):
    """What the stubs have in common: recording, and refusing or not answering."""

    def __init__(self, bus: dbus.Bus, path: str, behaviour: str, record: str) -> None:
        super().__init__(bus, path)
        self.behaviour = behaviour
        self._record = open(record, "a", encoding="utf-8")

    def note(self, call: str, **details: Any) -> None:
        """Records a call."""
        self._record.write(json.dumps({"call": call, **details}) + "\n")
        self._record.flush()

    def answer(self, reply: Callable[..., None], fail: Callable[[Exception], None],
               *results: Any) -> None:
        """Answers a call as the stub shall behave."""
        if self.behaviour == "answers":
            reply(*results)
        elif self.behaviour.startswith("answers-after-"):
            seconds = float(self.behaviour.rpartition("-")[2])
            GLib.timeout_add(int(seconds * 1000), lambda: reply(*results))
        elif self.behaviour == "refuses":
            fail(dbus.DBusException("It does not want to",
                                    name="org.freedesktop.DBus.Error.Failed"))


class FileManager(Service):
    """org.freedesktop.FileManager1, as far as programs use it."""

    @dbus.service.method("org.freedesktop.FileManager1", in_signature="ass", out_signature="",
                         async_callbacks=("reply", "fail"))
    def ShowItems(self, uris: Any, startup_id: Any, reply: Any, fail: Any) -> None:
        self.note("ShowItems", uris=[str(uri) for uri in uris], startup_id=str(startup_id))
        self.answer(reply, fail)


class Documents(Service):
    """org.freedesktop.portal.Documents: FileTransfer.RetrieveFiles. The key is the list of the
    files' paths, a line each."""

    @dbus.service.method(_FILE_TRANSFER, in_signature="sa{sv}", out_signature="as",
                         async_callbacks=("reply", "fail"))
    def RetrieveFiles(self, key: Any, options: Any, reply: Any, fail: Any) -> None:
        self.note("RetrieveFiles", key=str(key))
        self.answer(reply, fail, dbus.Array(str(key).splitlines(), signature="s"))


class Portal(Service):
    """org.freedesktop.portal.Desktop: OpenURI.OpenDirectory and Settings."""

    scheme = 0
    animations = True

    @dbus.service.method(_OPEN_URI, in_signature="sha{sv}", out_signature="o",
                         sender_keyword="sender", async_callbacks=("reply", "fail"))
    def OpenDirectory(self, parent: Any, descriptor: Any, options: Any, sender: Any, reply: Any,
                      fail: Any) -> None:
        file = descriptor.take()
        path = os.readlink(f"/proc/self/fd/{file}")
        os.close(file)
        self.note("OpenDirectory", path=path, parent=str(parent))
        token = str(options.get("handle_token", "t"))
        request = (f"/org/freedesktop/portal/desktop/request/"
                   f"{sender[1:].replace('.', '_')}/{token}")
        self.answer(reply, fail, dbus.ObjectPath(request))
        if self.behaviour == "answers":
            signal = dbus.lowlevel.SignalMessage(request, _REQUEST, "Response")
            signal.append(dbus.UInt32(0), dbus.Dictionary(signature="sv"), signature="ua{sv}")
            signal.set_destination(sender)
            self.connection.send_message(signal)

    # Read wraps the value twice, which was a mistake that programs had come to rely on; ReadOne
    # came with version 2 and does not.
    @dbus.service.method(_SETTINGS, in_signature="ss", out_signature="v",
                         async_callbacks=("reply", "fail"))
    def Read(self, namespace: Any, key: Any, reply: Any, fail: Any) -> None:
        self._read(namespace, key, reply, fail, levels=1)

    @dbus.service.method(_SETTINGS, in_signature="ss", out_signature="v",
                         async_callbacks=("reply", "fail"))
    def ReadOne(self, namespace: Any, key: Any, reply: Any, fail: Any) -> None:
        self._read(namespace, key, reply, fail, levels=0)

    @dbus.service.signal(_SETTINGS, signature="ssv")
    def SettingChanged(self, namespace: Any, key: Any, value: Any) -> None:
        """Tells all programs."""

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface: Any, name: Any) -> Any:
        if (interface, name) == (_SETTINGS, "version"):
            return dbus.UInt32(2)
        raise dbus.DBusException("no such property",
                                 name="org.freedesktop.DBus.Error.UnknownProperty")

    def change_animations(self, enabled: bool) -> None:
        """Sets whether things may move."""
        self.animations = enabled
        self.SettingChanged(_INTERFACE, "enable-animations", dbus.Boolean(enabled))
        self.note("animations", enabled=enabled)

    def change(self, scheme: int) -> None:
        """Sets the colour scheme."""
        self.scheme = scheme
        self.SettingChanged(_APPEARANCE, "color-scheme", dbus.UInt32(scheme))
        self.note("scheme", scheme=scheme)

    def _read(self, namespace: str, key: str, reply: Any, fail: Any, levels: int) -> None:
        self.note("Read", namespace=str(namespace), key=str(key))
        if (namespace, key) == (_INTERFACE, "enable-animations"):
            self.answer(reply, fail, dbus.Boolean(self.animations, variant_level=levels))
            return
        if (namespace, key) != (_APPEARANCE, "color-scheme"):
            fail(dbus.DBusException("Requested setting not found",
                                    name="org.freedesktop.portal.Error.NotFound"))
            return
        self.answer(reply, fail, dbus.UInt32(self.scheme, variant_level=levels))


def main() -> None:
    kind, behaviour, record = sys.argv[1:]
    bus = dbus.SessionBus(mainloop=dbus.mainloop.glib.DBusGMainLoop())
    service: Service
    if kind == "file-manager":
        name = dbus.service.BusName("org.freedesktop.FileManager1", bus, do_not_queue=True)
        service = FileManager(bus, "/org/freedesktop/FileManager1", behaviour, record)
    elif kind == "documents":
        name = dbus.service.BusName("org.freedesktop.portal.Documents", bus, do_not_queue=True)
        service = Documents(bus, "/org/freedesktop/portal/documents", behaviour, record)
    else:
        name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus, do_not_queue=True)
        service = Portal(bus, "/org/freedesktop/portal/desktop", behaviour, record)
    loop = GLib.MainLoop()

    def told(*_: Any) -> bool:
        line = sys.stdin.readline()
        if not line:
            loop.quit()
        elif isinstance(service, Portal):
            what, value = line.split()
            if what == "scheme":
                service.change(int(value))
            else:
                service.change_animations(value == "1")
        return bool(line)

    GLib.io_add_watch(0, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, told)
    service.note("ready", name=name.get_name())
    loop.run()


if __name__ == "__main__":
    main()
