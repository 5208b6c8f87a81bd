#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later

"""The screen stays on while a film plays or a show runs. A stand-in for the desktop's service, on a bus of its own,
records what the program asks for.

    screen_on.py PROGRAM
    screen_on.py --service
"""

import subprocess
import sys
import tempfile
from itertools import count
from pathlib import Path
from typing import Callable

from harness import Library, View, color_of
from virtual_desktop import Program, VirtualDesktop, Window, until

BUS = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context="default">
<allow send_destination="*"/><allow own="*"/><allow eavesdrop="true"/></policy></busconfig>"""
SERVICE = """<node><interface name="org.freedesktop.ScreenSaver">
<method name="Inhibit"><arg type="s"/><arg type="s"/><arg type="u" direction="out"/></method>
<method name="UnInhibit"><arg type="u"/></method></interface></node>"""
PLAY, PAUSE, STOP = (30, 560), (69, 560), (90, 560)


def serve() -> None:
    """Prints each call, and that a caller has left the bus."""
    from gi.repository import Gio, GLib

    cookies, callers = count(1), set()

    def called(bus, caller, path, interface, method, arguments, call) -> None:
        print(method, *arguments.unpack(), flush=True)
        call.return_value(GLib.Variant("(u)", (next(cookies),)) if method == "Inhibit" else None)
        if caller not in callers:
            callers.add(caller)
            Gio.bus_watch_name_on_connection(bus, caller, 0, None, lambda *_: print("left", flush=True))

    def own(bus, name) -> None:
        description = Gio.DBusNodeInfo.new_for_xml(SERVICE).interfaces[0]
        bus.register_object("/org/freedesktop/ScreenSaver", description, called, None, None)

    def owned(*_) -> None:
        print("ready", flush=True)

    Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.ScreenSaver", 0, own, owned, None)
    GLib.MainLoop().run()


class Service:
    def __init__(self, folder: Path, environment: dict[str, str]) -> None:
        self._record = folder / "record"
        with self._record.open("w") as record:
            # The system's interpreter, since that one has the module.
            command = "/usr/bin/python3", "-B", __file__, "--service"
            self._process = subprocess.Popen(command, env=environment, stdout=record)
        self._expected: list[str] = []
        self.hears("ready")

    def hears(self, *lines: str, act: Callable[[], object] = lambda: None, deadline: float = 60) -> None:
        self._expected += lines
        wanted = f"the service to hear {self._expected}"
        until(wanted, lambda: self._record.read_text().splitlines() == self._expected, act, deadline)

    def end(self) -> None:
        self._process.kill()
        self._process.wait()


class User:
    def __init__(self, desktop: VirtualDesktop, program: Program) -> None:
        self.desktop = desktop
        self.main = View(desktop, program.main_window())

    def starts_show(self, seconds: str) -> None:
        """The second photograph comes after this time."""
        self.desktop.choose(self.main.window, "v", "s")
        options = until("the options", lambda: next((w for w in self.desktop.windows() if not w.is_main), None))
        self.desktop.dismiss(options, "ctrl+a", *seconds, "Return")

    def sees_full_screen(self) -> None:
        def full() -> Window | None:
            return next((window for window in self.desktop.windows() if window.width > self.main.window.width), None)

        View(self.desktop, until("the full screen", full)).shows("the photograph", {(640, 512): color_of(0)})


def story(desktop: VirtualDesktop, library: Library, folder: Path) -> None:
    service = Service(folder, desktop.environment)
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        user = User(desktop, program)
        film = View.cell(0)
        service.hears("Inhibit Trovarium Film", act=lambda: user.main.click(film, times=2))
        # A pause counts after a minute.
        service.hears("UnInhibit 1", act=lambda: user.main.click(PAUSE), deadline=120)
        service.hears("Inhibit Trovarium Film", act=lambda: user.main.click(PLAY))
        service.hears("UnInhibit 2", act=lambda: user.main.click(STOP))
        user.main.do("Escape")
        user.starts_show("1")
        service.hears("Inhibit Trovarium Slide show", "UnInhibit 3")
        user.starts_show("5")
        user.sees_full_screen()
        service.hears("Inhibit Trovarium Slide show")
    service.hears("left")  # the program was killed
    service.end()
    with library.start(desktop) as program:
        user = User(desktop, program)
        user.starts_show("5")
        user.sees_full_screen()


def prepare(library: Library) -> None:
    library.photos.mkdir()
    red = "0x%02x%02x%02x" % color_of(0)
    for name, color, seconds in (("A.avi", "white", 30), ("B.jpg", red, 0.04), ("C.jpg", red, 0.04)):
        source = f"color={color}:s=320x240:r=25:d={seconds}"
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", source, library.photos / name], check=True)


if __name__ == "__main__":
    if sys.argv[1] == "--service":
        serve()
    with tempfile.TemporaryDirectory() as own, VirtualDesktop() as screen:
        config = Path(own) / "bus"
        config.write_text(BUS)
        bus_command = "dbus-daemon", "--nofork", "--print-address", f"--config-file={config}"
        with subprocess.Popen(bus_command, stdout=subprocess.PIPE, text=True) as bus:
            screen.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
            album = Library(Path(own), Path(sys.argv[1]).resolve())
            prepare(album)
            try:
                story(screen, album, Path(own))
            finally:
                bus.terminate()
