"""A library in a temporary folder, the built program in it, and where things lie in its window."""

from __future__ import annotations

import os
import subprocess
import sys
import tempfile
import traceback
from pathlib import Path
from typing import Callable, Iterable

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))

from virtual_desktop import CLIENT_HEIGHT, Pixels, Program, VirtualDesktop, Window, until  # noqa: E402

Colour = tuple[int, int, int]

ALL_PHOTOS = "  All Photos  "
CELLS = 16  # to a page


class Library:
    """A library folder with the program linked in, and settings of its own."""

    def __init__(self, folder: Path, program: Path) -> None:
        self.root = folder / "Album"
        self._home = folder / "home"
        self.root.mkdir()
        self._home.mkdir()
        (self._home / "run").mkdir(mode=0o700)
        self.link = self.root / "trovarium"
        self.link.symlink_to(program)
        self.photos = self.root / "Photos"
        self.thumbnails = self.root / "Photo_Thumbnails"
        self.infos = self.root / "Photo_Info"
        self.groups = self.root / "Photo_SlideGroups"

    def start(self, desktop: VirtualDesktop) -> Program:
        return Program(
            desktop,
            self.link,
            HOME=str(self._home),
            XDG_CONFIG_HOME=str(self._home / "config"),
            XDG_DATA_HOME=str(self._home / "data"),
            XDG_CACHE_HOME=str(self._home / "cache"),
            XDG_RUNTIME_DIR=str(self._home / "run"),
        )

    def take_in(self, photographs: Iterable[str]) -> None:
        """Information files for photographs, so that the next start builds their thumbnails."""
        self.infos.mkdir(exist_ok=True)
        self.groups.mkdir(exist_ok=True)
        keys = ("TITLE", "PHOTOGRAPHER", "YEAR", "PEOPLE", "PLACE", "EVENT", "KEYWORDS", "ImageWidth", "ImageHeight")
        for photograph in photographs:
            text = rf"PhotoPath=\Photos\{photograph}" + "\r\n" + "".join(f"{key}=\r\n" for key in keys)
            (self.infos / f"{photograph}.info").write_text(text, newline="")

    def write_group(self, name: str, photographs: Iterable[str]) -> None:
        text = "".join(photograph + "\r\n" for photograph in photographs)
        (self.groups / f"{name}.lst").write_text(text, newline="")

    def group(self, name: str) -> bytes:
        return (self.groups / f"{name}.lst").read_bytes()

    def states(self, folder: Path) -> dict[str, tuple[int, int, bytes]]:
        """Of each file in a folder: when it was changed, its number on disk, its contents."""
        return {
            file.name: (file.stat().st_mtime_ns, file.stat().st_ino, file.read_bytes())
            for file in sorted(folder.iterdir())
            if file.is_file()
        }


class MainWindow:
    """The main window by its plan; places are pixels of the client area, which begins below the menu bar."""

    def __init__(self, desktop: VirtualDesktop, program: Program) -> None:
        self._desktop = desktop
        self._window = program.main_window()
        self._menu_height = self._window.height - CLIENT_HEIGHT

    def shot(self) -> Pixels:
        return until("a picture of the window", lambda: self._desktop.picture(self._window))

    def colour(self, place: tuple[int, int]) -> Colour:
        return self.shot().at(place[0], place[1] + self._menu_height)

    def click(self, place: tuple[int, int]) -> None:
        self._desktop.click(self._window, place[0], place[1] + self._menu_height)

    def double_click(self, place: tuple[int, int]) -> None:
        self._desktop.double_click(self._window, place[0], place[1] + self._menu_height)

    def drag(self, start: tuple[int, int], *way: tuple[int, int]) -> None:
        """Presses at `start`, moves along the way, and releases at its end."""
        self._desktop.drag(self._window, *((x, y + self._menu_height) for x, y in (start, *way)))

    def shows(self, what: str, colours: dict[tuple[int, int], Colour | None]) -> None:
        """Waits until each place has its colour; None stands for none of the photographs' colours."""
        seen: dict[tuple[int, int], Colour] = {}

        def as_expected() -> bool:
            picture = self.shot()
            seen.update({place: picture.at(place[0], place[1] + self._menu_height) for place in colours})
            return all(
                looks_like(seen[place], colour) if colour else not is_of_a_photograph(seen[place])
                for place, colour in colours.items()
            )

        try:
            until(what, as_expected, 20)
        except AssertionError as failure:
            wrong = {place: (seen[place], colour) for place, colour in colours.items()}
            raise AssertionError(f"{failure}\nplace: (seen, expected) = {wrong}") from None

    # ---- the plan ----

    @staticmethod
    def cell(index: int) -> tuple[int, int]:
        """In the upper half of a thumbnail, where neither name nor rim lies; `index` is 0 to 15."""
        return 204 + 24 + 128 * (index % 4) + 50, 40 + 16 + 112 * (index // 4) + 30

    @staticmethod
    def group_row(row: int) -> tuple[int, int]:
        return 16 + 70, 80 + 32 * row + 15

    FRAME_CENTRE = (204 + 272, 40 + 234)
    PREVIOUS = (16 + 34, 504 + 15)
    NEXT = (86 + 34, 504 + 15)
    SCROLLBAR_DOWN = (204 + 528 + 8, 40 + 12 + 377 - 8)
    SCROLLBAR_UP = (204 + 528 + 8, 40 + 12 + 8)


# Far apart from one another, and saturated, as nothing in the window's own art is.
PALETTE: list[Colour] = [(230, 20, 20), (20, 200, 20), (230, 220, 10), (220, 20, 220), (20, 220, 220), (250, 130, 0)]


def looks_like(seen: Colour, colour: Colour) -> bool:
    return all(abs(one - other) <= 24 for one, other in zip(seen, colour))


def is_of_a_photograph(seen: Colour) -> bool:
    return any(looks_like(seen, colour) for colour in PALETTE)


def colour_of(number: int) -> Colour:
    """The colour of the photograph with this number: neighbours differ, and so do whole pages."""
    return PALETTE[(number + number // CELLS) % len(PALETTE)]


def make_photograph(path: Path, number: int, width: int, height: int, seconds: float) -> None:
    """A picture in the colour of its number, dated `seconds` after the epoch."""
    red, green, blue = colour_of(number)
    command = ("convert", "-size", f"{width}x{height}", f"xc:rgb({red},{green},{blue})", str(path))
    subprocess.run(command, check=True)
    os.utime(path, ns=(int(seconds * 1e9), int(seconds * 1e9)))


def equal(what: str, seen: object, expected: object) -> None:
    assert seen == expected, f"{what}\n  seen:     {seen!r}\n  expected: {expected!r}"


def unchanged(what: str, seen: dict[str, object], before: dict[str, object]) -> None:
    """Both are what `Library.states` gave; the failure names the files that differ."""
    different = sorted(name for name in seen.keys() | before.keys() if seen.get(name) != before.get(name))
    pairs = "".join(f"\n  {name}\n    now:    {seen.get(name)}\n    before: {before.get(name)}" for name in different)
    assert not different, f"{what} changed:{pairs}"


def scenario(play: Callable[[VirtualDesktop, Library], None]) -> None:
    """Plays one scenario with the program that the command line names; the exit code tells how it went."""
    program = Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        try:
            with VirtualDesktop() as desktop:
                play(desktop, Library(Path(folder), program))
        except AssertionError:
            traceback.print_exc()
            sys.exit(1)
    print("passed")
