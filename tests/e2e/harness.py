# SPDX-License-Identifier: GPL-3.0-or-later

"""A library in a temporary folder, the built program in it, and where things lie in its windows."""

import os
import sys
from itertools import count
from pathlib import Path
from typing import Callable, Iterable

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))

from virtual_desktop import CLIENT_HEIGHT, Program, VirtualDesktop, Window, until  # noqa: E402

Color = tuple[int, int, int]
Place = tuple[int, int]
Colors = dict[Place, Color | None]

ALL_PHOTOS = "  All Photos  "
CELLS = 16  # to a page
WHITE = (255, 255, 255)
YELLOW = (255, 255, 0)  # where the dragged ones would go


class Home:
    """A home folder of its own, with a file that takes the addresses of pages."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        self.page = folder / "page"  # the address that the desktop was to open
        folder.mkdir(mode=0o700)
        opener = folder / "xdg-open"
        opener.write_text(f'#!/bin/sh\nprintf %s "$1" >"{self.page}.new" && mv "{self.page}.new" "{self.page}"\n')
        opener.chmod(0o700)

    def start(self, desktop: VirtualDesktop, *command: Path) -> Program:
        own = dict.fromkeys(("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"), "")
        own |= dict.fromkeys(("HOME", "XDG_RUNTIME_DIR"), str(self.folder))
        own |= {"PATH": f"{self.folder}:{os.environ['PATH']}", "SDL_AUDIODRIVER": "dummy"}
        return Program(desktop, *command, **own)


class Library:
    """A library folder with the program linked in, and a home."""

    def __init__(self, folder: Path, program: Path) -> None:
        self.root = folder / "Album"
        self.camera = self.root / "Camera"
        self.home = Home(folder / "home")
        self.camera.mkdir(parents=True)
        (self.root / "trovarium").symlink_to(program)
        self.photos = self.root / "Photos"
        self.infos = self.root / "Photo_Info"

    def start(self, desktop: VirtualDesktop) -> Program:
        return self.home.start(desktop, self.root / "trovarium")

    def group(self, name: str) -> list[str] | None:
        """Nothing when there is no such list, be it gone only now."""
        try:
            text = (self.root / "Photo_SlideGroups" / f"{name}.lst").read_bytes().decode()
        except FileNotFoundError:
            return None
        assert not text or text.endswith("\r\n"), f"the list {name} ends in the middle of a line"
        return text.split("\r\n")[:-1]


class View:
    """A window by its plan; places are pixels of the client area, which begins below the menu bar if there is one."""

    def __init__(self, desktop: VirtualDesktop, window: Window) -> None:
        self.desktop = desktop
        self.window = window
        self._menu_height = window.height - CLIENT_HEIGHT if window.is_main else 0

    def _do(self, place: Place, *act: str) -> None:
        self.desktop.mouse(self.window, place[0], place[1] + self._menu_height, *act)

    def click(self, place: Place, times: int = 1) -> None:
        self._do(place, "click", "--repeat", str(times), "--delay", "60", "1")

    def do(self, *steps: str | Place | dict[Place, str]) -> None:
        """Keys by their names, clicks at places, and texts in place of what stands in the text boxes there."""
        for step in steps:
            if isinstance(step, str):
                self.desktop.type(self.window, *step.split())
            elif isinstance(step, tuple):
                self.click(step)
            else:
                for place, text in step.items():
                    self.do(place, "ctrl+a")
                    self.desktop.act("type", text)

    def drag(self, start: Place, *way: tuple[Place, Colors]) -> None:
        """Presses, and moves on whenever the window shows the colors that stand beside the place."""
        self._do(start, "mousedown", "1")
        for (x, y), colors in way:
            # One move a time, since each turns a page; a move to where the mouse is would be none.
            tries = count()
            self.shows(f"the drag to {x}, {y}", colors, lambda: self._do((x + next(tries) % 2, y)))
        self.desktop.act("mouseup", "1")

    def colors(self, places: Iterable[Place]) -> dict[Place, Color]:
        picture = until("a picture of the window", lambda: self.desktop.picture(self.window))
        return {(x, y): picture.at(x, y + self._menu_height) for x, y in places}

    def has_ink(self, place: Place, width: int) -> bool:
        """Whether something light stands on the line of pixels that begins at the place."""
        return any(min(ink) > 150 for ink in self.colors((place[0] + k, place[1]) for k in range(width)).values())

    def shows(self, what: str, colors: Colors, act: Callable[[], object] = lambda: None) -> None:
        """Acts until each place looks like its color."""

        def as_expected() -> bool:
            seen = self.colors(colors)
            return all(looks_like(seen[place], color) for place, color in colors.items())

        until(f"{what}: {colors}", as_expected, act)

    def shows_page(self, what: str, numbers: list[int], act: Callable[[], object] = lambda: None) -> None:
        """The photographs with these numbers, from the first cell on, and no further one."""
        shown = [color_of(number) for number in numbers] + [None] * CELLS
        self.shows(what, {self.cell(k): shown[k] for k in range(CELLS)}, act)

    # ---- the plan of the main window ----

    MIDDLE, RIGHT_HALF, MARK_BEHIND = 50, 80, 113  # pixels from a thumbnail's left edge

    @staticmethod
    def cell(index: int, right: int = MIDDLE) -> Place:
        """In the upper half of a thumbnail, where no name lies; `index` is 0 to 15."""
        return 204 + 24 + 128 * (index % 4) + right, 40 + 16 + 112 * (index // 4) + 30

    TRIP_ROW = (16 + 70, 80 + 32 + 15)  # the second one of the groups
    FRAME_CENTRE = (204 + 272, 40 + 234)
    NEXT = (86 + 34, 504 + 15)
    SCROLLBAR_DOWN = (204 + 528 + 8, 40 + 12 + 377 - 8)


# Far apart from one another, and saturated, as nothing in the window's own art is.
PALETTE: list[Color] = [(230, 20, 20), (20, 200, 20), (230, 220, 10), (220, 20, 220), (20, 220, 220), (250, 130, 0)]


def looks_like(seen: Color, color: Color | None) -> bool:
    """None stands for the ground of the window: nothing of a photograph, and no mark."""
    if color is None:
        return not any(looks_like(seen, other) for other in (*PALETTE, YELLOW))
    return all(abs(one - other) <= 24 for one, other in zip(seen, color))


def color_of(number: int) -> Color:
    """The color of the photograph with this number: neighbours differ, and so do whole pages."""
    return PALETTE[(number + number // CELLS) % len(PALETTE)]


def equal(what: str, seen: object, expected: object) -> None:
    assert seen == expected, f"{what}\n  seen:     {seen!r}\n  expected: {expected!r}"
