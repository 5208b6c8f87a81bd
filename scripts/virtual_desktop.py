# SPDX-License-Identifier: GPL-3.0-or-later

"""A screen that nobody sees, and the program on it: Xvfb with openbox, driven by xdotool.

Every wait is for a condition, with a deadline; what a deadline misses is an AssertionError that says
what was waited for. A key or a press may be lost while the desktop is busy, so it is repeated until it
worked, and never before it was seen that it hadn't.
"""

from __future__ import annotations

import os
import re
import signal
import subprocess
import time
from pathlib import Path
from typing import Callable, NamedTuple, TypeVar

Found = TypeVar("Found")

DEADLINE = 60.0  # seconds; far above what a slow machine needs
PATIENCE = 8.0  # seconds after which an act that nothing came of counts as lost, and not as slow
TITLE = "Trovarium"
CLIENT_WIDTH = 800  # pixels of the main window, below its menu bar
CLIENT_HEIGHT = 572


class Window(NamedTuple):
    """A window's contents on the screen, without the window manager's frame; pixels."""

    id: str
    name: str
    left: int
    top: int
    width: int
    height: int

    @property
    def is_main(self) -> bool:
        return self.name == TITLE and self.width == CLIENT_WIDTH and self.height >= CLIENT_HEIGHT


class Pixels:
    """A picture of a window."""

    def __init__(self, width: int, height: int, data: bytes) -> None:
        assert len(data) == 3 * width * height, f"a picture of {width} x {height} came as {len(data)} bytes"
        self.width = width
        self.height = height
        self.data = data

    def at(self, x: int, y: int) -> tuple[int, int, int]:
        start = 3 * (y * self.width + x)
        red, green, blue = self.data[start : start + 3]
        return red, green, blue

    def colors(self) -> int:
        """How many colors there are in a sample of the points."""
        return len({self.data[start : start + 3] for start in range(0, len(self.data), 3 * 7)})


def until(
    what: str,
    condition: Callable[[], Found],
    act: Callable[[], object] = lambda: None,
    deadline: float = DEADLINE,
) -> Found:
    """Acts, asks until the answer is true, and gives it; acts again whenever nothing came of it."""
    end = time.monotonic() + deadline
    act()
    lost = time.monotonic() + PATIENCE
    while not (answer := condition()):
        assert time.monotonic() < end, f"waited {deadline:.0f} s in vain for {what}"
        if time.monotonic() > lost:
            act()
            lost = time.monotonic() + PATIENCE
        time.sleep(0.02)
    return answer


def _unwind(number: int, frame: object) -> None:
    # So that a run that is told to end leaves no screen behind.
    raise SystemExit(128 + number)


class VirtualDesktop:
    """Xvfb on a free display number, with openbox; ends both when left. In the folder `frames`, if given, the screen
    is the file Xvfb_screen0, a picture in the format of xwd."""

    def __init__(self, width: int = 1280, height: int = 1024, frames: Path | None = None) -> None:
        self._size = f"{width}x{height}x24"
        self._frames = ["-fbdir", str(frames)] if frames else []
        self._processes: list[subprocess.Popen[bytes]] = []
        self.environment = {
            name: value
            for name, value in os.environ.items()
            if name not in ("WAYLAND_DISPLAY", "XAUTHORITY", "DISPLAY") and not name.startswith("QT_")
        }
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        self.environment.setdefault("LC_ALL", "C.UTF-8")

    def __enter__(self) -> VirtualDesktop:
        signal.signal(signal.SIGTERM, _unwind)
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *reason: object) -> None:
        for process in reversed(self._processes):
            process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self._processes.clear()

    def _start(self) -> None:
        read_end, write_end = os.pipe()
        # Without -noreset the screen starts anew whenever its last client leaves, and drops who comes just then.
        screen = ["Xvfb", "-displayfd", str(write_end), "-screen", "0", self._size, "-nolisten", "tcp", "-noreset"]
        screen += self._frames
        self._processes.append(
            subprocess.Popen(screen, pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        )
        os.close(write_end)
        with os.fdopen(read_end, "rb") as ready:
            number = ready.readline().decode().strip()
        assert number, "Xvfb did not start"
        self.environment["DISPLAY"] = ":" + number

        self._processes.append(
            subprocess.Popen(
                ["openbox"], env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
            )
        )
        until("the window manager", self._is_managed)

    def _is_managed(self) -> bool:
        assert self._processes[-1].poll() is None, "the window manager ended by itself"
        # It tells its name well before it is ready, and the list of its windows when it is.
        return b"window id" in self.ask("xprop", "-root", "_NET_CLIENT_LIST_STACKING")

    def ask(self, *command: str) -> bytes:
        """What a command prints; nothing when it fails, as it does for a window that has just gone."""
        done = subprocess.run(
            command, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=DEADLINE
        )
        return done.stdout if done.returncode == 0 else b""

    def act(self, *command: str) -> None:
        """xdotool with these arguments."""
        subprocess.run(("xdotool", *command), env=self.environment, check=True, timeout=DEADLINE)

    # ---- windows ----

    def windows(self) -> list[Window]:
        """The windows that can be seen, as the window manager lists them, bottom to top."""
        listed = self.ask("xprop", "-root", "_NET_CLIENT_LIST_STACKING").decode()
        found = (self._window(number) for number in re.findall(r"0x[0-9a-f]+", listed))
        return [window for window in found if window]

    def _window(self, number: str) -> Window | None:
        text = self.ask("xwininfo", "-id", number).decode("utf-8", "replace")
        if "IsViewable" not in text:
            return None

        def figure(label: str) -> int:
            return int(re.search(label + r":\s*(-?\d+)", text).group(1))

        name = re.search(r'Window id: \S+ "(.*)"', text)
        return Window(
            number,
            name.group(1) if name else "",
            figure("Absolute upper-left X"),
            figure("Absolute upper-left Y"),
            figure("Width"),
            figure("Height"),
        )

    def has_menu(self) -> bool:
        """Whether a menu is open: a window without the window manager's frame that is no tool tip."""
        children = self.ask("xwininfo", "-root", "-children").decode("utf-8", "replace")
        return any(
            self._window(number) and b"_TOOLTIP" not in self.ask("xprop", "-id", number, "_NET_WM_WINDOW_TYPE")
            for number in re.findall(r'(0x[0-9a-f]+) .*\("trovarium"', children)
        )

    def main_window(self) -> Window | None:
        return next((window for window in self.windows() if window.is_main), None)

    def notice(self) -> Window | None:
        """The notice of the first start, which bears the same name as the main window."""
        return next(
            (window for window in self.windows() if window.name == TITLE and not window.is_main and self.main_window()),
            None,
        )

    def is_active(self, window: Window) -> bool:
        active = re.search(rb"0x[0-9a-f]+", self.ask("xprop", "-root", "_NET_ACTIVE_WINDOW"))
        return bool(active) and int(active.group(0), 16) == int(window.id, 16)

    def activate(self, window: Window) -> None:
        def ask() -> None:
            self.act("windowactivate", window.id)

        until(f"{window.name} to take the keys", lambda: self.is_active(window), ask)

    def type(self, window: Window, *keys: str) -> None:
        self.activate(window)
        self.act("key", "--clearmodifiers", *keys)

    def choose(self, window: Window, menu: str, entry: str) -> None:
        """By the access keys of the menu bar and of the menu."""
        until("the menu", self.has_menu, lambda: self.type(window, "alt+" + menu))
        until("the menu to go", lambda: not self.has_menu(), lambda: self.act("key", entry))

    def dismiss(self, window: Window, *keys: str) -> None:
        """Types into a window, and all of it again until the window has gone."""

        def gone() -> bool:
            return all(other.id != window.id for other in self.windows())

        until(f"{window.name} to go", gone, lambda: self.type(window, *keys))

    def close(self, window: Window) -> None:
        """As with the window's close box: the window manager asks the program for it."""
        self.dismiss(window, "alt+F4")

    # ---- mouse and pixels; places are pixels of the window ----

    def mouse(self, window: Window, x: int, y: int, *act: str) -> None:
        """Moves there, and does what xdotool is told then."""
        self.act("mousemove", str(window.left + x), str(window.top + y), *act)

    def picture(self, window: Window) -> Pixels | None:
        data = self.ask("import", "-silent", "-window", window.id, "-depth", "8", "rgb:-")
        return Pixels(window.width, window.height, data) if data else None

    def save_picture(self, window: Window, path: Path) -> None:
        subprocess.run(
            ("import", "-silent", "-window", window.id, str(path)),
            env=self.environment,
            check=True,
            timeout=DEADLINE,
        )


class Program:
    """The program at work on its library: started through the link that stands there, or by the installed command."""

    def __init__(self, desktop: VirtualDesktop, *command: Path, **environment: str) -> None:
        self._desktop = desktop
        self._process = subprocess.Popen(command, env={**desktop.environment, **environment})

    def __enter__(self) -> Program:
        return self

    def __exit__(self, *reason: object) -> None:
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()

    def running(self) -> bool:
        return self._process.poll() is None

    def main_window(self, deadline: float = DEADLINE) -> Window:
        """The main window, once it stands and is painted."""

        def standing() -> Window | None:
            assert self.running(), f"the program ended by itself, with {self._process.returncode}"
            return self._desktop.main_window()

        window = until("the main window", standing, deadline=deadline)
        last: list[Pixels] = []

        def painted() -> bool:
            picture = self._desktop.picture(window)
            if picture is None:
                return False
            calm = bool(last) and last[-1].data == picture.data
            last[:] = [picture]
            return calm and picture.colors() > 50

        until("the main window to be painted", painted, deadline=deadline)
        # The window manager may have moved it meanwhile.
        return until("the main window", standing, deadline=deadline)

    def close_notice(self) -> None:
        """Closes the notice that comes over the main window at the first start."""
        self._desktop.close(until("the notice of the first start", self._desktop.notice))

    def exit(self) -> int:
        """Ends the program by Exit on its File menu; gives the exit code."""
        self._desktop.choose(until("the main window", self._desktop.main_window), "f", "x")
        return self.wait()

    def wait(self) -> int:
        return self._process.wait(DEADLINE)
