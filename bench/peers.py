# SPDX-License-Identifier: GPL-3.0-or-later

"""The program beside other viewers on the same 500 photographs of 12 megapixels, each in the virtual display by the
same script: start to a full page of thumbnails, a photograph opened by mouse, ten steps by a key.

Something is shown when the screen has many colors and stands still for two seconds; it counts from the act to the last
change. Processor time and memory are those of all processes of a session, without its bus; the memory is the peak up to
then. Each viewer has a home folder of its own, where a first run has made the settings and the thumbnails; it is kept
like the photographs."""

import dataclasses
import mmap
import os
import re
import shutil
import signal
import statistics
import struct
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable
from pathlib import Path

import data

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "scripts"))
from virtual_desktop import VirtualDesktop, Window, until  # noqa: E402

STEPS = 10
STILL = 2.0  # seconds; a slow viewer has a thumbnail more in less
IDLE = 5.0  # seconds with less than a twentieth of a processor's time
DEADLINE = 600.0
LOST = 30.0  # seconds; longer than any viewer takes to begin
SMALLEST_CHANGE = 1 / 1000  # of the points: more than a caret, less than a thumbnail
OTHER_PICTURE = 1 / 20
MANY_COLORS = 2000  # in the points looked at; icons and texts have some hundred
EVERY = 7  # of the points that are looked at
BUS = {"dbus-run-session", "dbus-daemon"}
TICK = os.sysconf("SC_CLK_TCK")


@dataclasses.dataclass
class Viewer:
    command: str
    photograph: tuple[int, int]  # where a thumbnail, not the first one, is in its window
    opens: int = 2  # clicks
    step: str = "Page_Down"  # the key
    settings: tuple[str, str] | None = None  # a file of the home folder, and its contents


@dataclasses.dataclass
class Figures:
    time: float  # milliseconds
    processor: float  # milliseconds
    memory: float  # MB, the peak up to then


# Without the notice that welcomes the user.
PROGRAM = Viewer("trovarium", (406, 215), settings=(
    ".config/OmbrelaneWorks/settings.txt", "[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]\nFirstTime=False\n"))
# With thumbnails instead of a list of names, in a window of the program's size. It keeps the width of its columns, so the
# thumbnail is one of the first column.
GEEQIE = Viewer("geeqie", (80, 360), 1, settings=(
    ".config/geeqie/geeqierc.xml",
    '<gq><global thumbnails.max_width="96" thumbnails.max_height="72" thumbnails.enable_caching="true" '
    'thumbnails.spec_standard="true"/><layout id="lw1" file_view_type="1" show_thumbnails="true" '
    'main_window.w="800" main_window.h="600"/></gq>\n'))
PEERS = [GEEQIE, Viewer("gwenview", (205, 221), step="Right"), Viewer("gthumb", (561, 346))]
STAGES = ["start to a full page", "photograph opened", f"{STEPS} steps on"]


class Screen:
    """What the virtual screen shows, read from its memory at next to no cost."""

    def __init__(self, folder: Path) -> None:
        with (folder / "Xvfb_screen0").open("rb") as file:
            self._map = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._map[:100])
        self._start = header[0] + 12 * header[19]  # behind the colors, 12 bytes each

    def points(self) -> bytes:
        """One color of some of the points."""
        return self._map[self._start + 1::4 * EVERY]

    def colors(self) -> int:
        channels = [self._map[self._start + channel::4 * EVERY] for channel in range(3)]
        return len(set(zip(*channels)))

    def time_of(self, act: Callable[[], object], repeats: bool = True) -> float:
        """Milliseconds from the act to the last change, once another picture is shown. An act that shows none
        for long was lost and is repeated, unless told otherwise."""
        before = shown = self.points()
        first = start = changed = time.monotonic()
        act()
        while True:
            time.sleep(0.01)
            points, now = self.points(), time.monotonic()
            if difference(points, shown) > SMALLEST_CHANGE:
                shown, changed = points, now
            elif (now - changed > STILL and difference(shown, before) > OTHER_PICTURE
                  and self.colors() > MANY_COLORS):
                return (changed - start) * 1000
            elif repeats and now - start > LOST and difference(shown, before) <= OTHER_PICTURE:
                start = changed = now
                act()
            if now - first > DEADLINE:
                raise RuntimeError("the screen never stood still with another picture")


def difference(one: bytes, other: bytes) -> float:
    """The part of the points that differ."""
    if one == other:
        return 0
    return sum(a != b for a, b in zip(one, other)) / len(one)


class Session:
    """A viewer at work, with a bus of its own, in a home folder."""

    def __init__(self, desktop: VirtualDesktop, home: Path, command: list[str | Path]) -> None:
        environment = {name: value for name, value in desktop.environment.items() if not name.startswith("XDG_")}
        environment |= {"HOME": str(home), "XDG_RUNTIME_DIR": str(home), "SDL_AUDIODRIVER": "dummy"}
        self._process = subprocess.Popen(["dbus-run-session", "--", *command], env=environment,
                                         start_new_session=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def __enter__(self) -> "Session":
        return self

    def __exit__(self, *reason: object) -> None:
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()

    def _processes(self) -> list[Path]:
        found = [Path("/proc", str(self._process.pid))]
        for process in found:
            for thread in _lines(process / "task", "children"):
                found += [Path("/proc", child) for child in thread.split()]
        return [process for process in found if "".join(_lines(process, "comm")).strip() not in BUS]

    def wait_until_idle(self) -> None:
        last, used = -DEADLINE, self.processor_time()
        while used - last > IDLE * 1000 / 20:
            time.sleep(IDLE)
            last, used = used, self.processor_time()

    def processor_time(self) -> float:
        """Milliseconds, with those of processes that have ended."""
        fields = [text.rpartition(")")[2].split() for process in self._processes() for text in _lines(process, "stat")]
        return sum(sum(map(int, each[11:15])) for each in fields) * 1000 / TICK

    def memory(self) -> float:
        """The peaks of all processes in MB."""
        texts = [text for process in self._processes() for text in _lines(process, "status")]
        return sum(int(peak) for text in texts for peak in re.findall(r"VmHWM:\s*(\d+)", text)) / 1024


def _lines(folder: Path, name: str) -> list[str]:
    """The files of this name in the folder or in the folders in it; a process may be gone meanwhile."""
    texts = []
    try:
        for path in [folder / name] if name != "children" else folder.glob("*/children"):
            texts.append(path.read_text(encoding="utf-8", errors="replace"))
    except OSError:
        pass
    return texts


def main_window(desktop: VirtualDesktop) -> Window:
    return max(until("a window", desktop.windows), key=lambda window: window.width * window.height)


def started(desktop: VirtualDesktop, screen: Screen, home: Path, command: list[str | Path]) -> tuple[Session, float]:
    """A session and the time to its full page."""
    sessions: list[Session] = []
    taken = screen.time_of(lambda: sessions.append(Session(desktop, home, command)), repeats=False)
    return sessions[0], taken


def run(
    desktop: VirtualDesktop, screen: Screen, viewer: Viewer, home: Path, command: list[str | Path]
) -> list[Figures]:
    """The three stages, one after the other."""
    figures: list[Figures] = []
    session, taken = started(desktop, screen, home, command)

    def note(taken: float) -> None:
        used = session.processor_time() - sum(stage.processor for stage in figures)
        figures.append(Figures(taken, used, session.memory()))

    with session:
        note(taken)
        desktop.mouse(main_window(desktop), *viewer.photograph)
        time.sleep(STILL)
        note(screen.time_of(lambda: desktop.act("click", "--repeat", str(viewer.opens), "--delay", "20", "1")))
        note(sum(screen.time_of(lambda: desktop.act("key", viewer.step)) for _ in range(STEPS)))
        close_all(desktop)
    return figures


def home_of(desktop: VirtualDesktop, screen: Screen, viewer: Viewer, folder: Path, command: list[str | Path]) -> Path:
    home = folder / viewer.command
    if home.exists():
        return home
    unfinished = home.with_name(home.name + ".part")
    shutil.rmtree(unfinished, ignore_errors=True)
    unfinished.mkdir(mode=0o700, parents=True)
    if viewer.settings:
        name, text = viewer.settings
        (unfinished / name).parent.mkdir(parents=True)
        (unfinished / name).write_text(text, encoding="ascii")
    session, _ = started(desktop, screen, unfinished, command)
    with session:
        session.wait_until_idle()
        close_all(desktop)
    return unfinished.rename(home)


def close_all(desktop: VirtualDesktop) -> None:
    while windows := desktop.windows():
        desktop.close(windows[-1])


def command_of(viewer: Viewer, build: Path, library: Path) -> list[str | Path]:
    if viewer is not PROGRAM:
        return [viewer.command, library / "Photos"]
    link = library / "trovarium"
    link.unlink(missing_ok=True)
    link.symlink_to(build / "trovarium")
    return [link]


def measure(viewer: Viewer, homes: Path, command: list[str | Path], rounds: int) -> list[list[Figures]]:
    with tempfile.TemporaryDirectory() as frames, VirtualDesktop(1280, 800, Path(frames)) as desktop:
        screen = Screen(Path(frames))
        home = home_of(desktop, screen, viewer, homes, command)
        return [run(desktop, screen, viewer, home, command) for _ in range(rounds + 1)][1:]  # the first warms up


def compare(build: Path, folder: Path, rounds: int) -> None:
    """Prints a table of medians; a viewer that is not installed is left out."""
    library = data.library_of_peers(folder)
    present = [PROGRAM] + [peer for peer in PEERS if shutil.which(peer.command)]
    for peer in PEERS:
        if peer not in present:
            print(f"{peer.command} is not installed and is left out.")
    homes = folder / "homes of viewers"
    results = [measure(viewer, homes, command_of(viewer, build, library), rounds) for viewer in present]
    print("| | " + " | ".join(viewer.command for viewer in present) + " |")
    print("|---" * (len(present) + 1) + "|")
    for number, stage in enumerate(STAGES):
        for quantity, unit in [("time", "ms"), ("processor", "ms"), ("memory", "MB")]:
            medians = (statistics.median(getattr(stages[number], quantity) for stages in runs) for runs in results)
            print(f"| {stage}: {quantity} | " + " | ".join(f"{median:,.0f} {unit}" for median in medians) + " |")
