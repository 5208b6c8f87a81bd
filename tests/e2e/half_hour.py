# SPDX-License-Identifier: GPL-3.0-or-later

"""A new user's first half hour, with mouse and keys: photographs and clips come in, are sorted and described. It ends
while a clip plays.

    half_hour.py PROGRAM
"""

import subprocess
import sys
import tempfile
from pathlib import Path

from harness import ALL_PHOTOS, WHITE, YELLOW, Library, View, color_of, equal
from virtual_desktop import Program, VirtualDesktop, Window, until

PHOTOS = [f"Photo {number:02}.jpg" for number in range(40)]
NAMES = [*PHOTOS, "Photo 40.avi", "Photo 41.mov"]
TRIP = [0, 2, 40]  # the group that the user makes
LOW_EDIT_BUTTON, RAISED_EDIT_BUTTON, TITLE = (238, 501), (238, 352), (704, 522)


def make(path: Path, number: int) -> None:
    """A picture in the color of its number, or a clip that turns white after a second and a half."""
    colors, seconds, kind = (["0x%02x%02x%02x" % color_of(number)], 0.04, [])
    if number >= len(PHOTOS):
        colors, seconds, kind = [*colors, "white"], 1.5, ["-filter_complex", "concat,format=yuv420p"]
    inputs = [part for c in colors for part in ("-f", "lavfi", "-i", f"color={c}:s=320x240:r=25:d={seconds}")]
    subprocess.run(["ffmpeg", "-v", "error", *inputs, *kind, "-q:v", "1", path], check=True)


class User:
    def __init__(self, desktop: VirtualDesktop, library: Library, program: Program) -> None:
        self.desktop = desktop
        self.library = library
        self.main = View(desktop, program.main_window())

    def other_window(self) -> Window | None:
        return next((other for other in self.desktop.windows() if not other.is_main), None)

    def opens(self, menu: str, entry: str) -> View:
        """The window that the entry of the menu opens, by their access keys."""
        self.desktop.choose(self.main.window, menu, entry)
        return View(self.desktop, until("a dialog", self.other_window))

    def holds(self, group: str, numbers: list[int]) -> None:
        expected = [NAMES[number] for number in numbers]
        until(f"the list {group} to be {expected}", lambda: self.library.group(group) == expected)

    def copy_to_trip(self, cell: int) -> None:
        mark = View.cell(0, View.MARK_BEHIND)  # gone while the pointer is beside the frame
        way = [(View.cell(0, View.RIGHT_HALF), {mark: YELLOW}), (View.TRIP_ROW, {mark: None})]
        self.main.drag(View.cell(cell), *way)

    # ---- the half hour ----

    def take_in(self) -> None:
        dialog = self.opens("f", "i")
        choose_all = "C Return", (88, 230), "ctrl+a alt+d"
        until("a long list", lambda: dialog.has_ink((500, 334), 60), lambda: dialog.do(*choose_all))
        until("copies", lambda: not dialog.has_ink((31, 522), 12), lambda: dialog.click((36, 522)))
        until("the import", lambda: any(self.library.infos.iterdir()), lambda: dialog.do("alt+i"))
        self.holds(ALL_PHOTOS, list(range(len(NAMES))))
        self.desktop.close(dialog.window)

    def make_groups(self) -> None:
        everything = list(range(len(NAMES)))
        self.desktop.dismiss(self.opens("f", "c").window, "ctrl+a", *"Trip", "Return")
        self.holds("Trip", [])
        self.copy_to_trip(0)
        self.copy_to_trip(2)
        for page in (everything[16:32], everything[32:]):
            self.main.shows_page("the page below", page, lambda: self.main.click(View.SCROLLBAR_DOWN))
        self.copy_to_trip(40 - 32)
        self.holds("Trip", TRIP)

    def describe(self) -> None:
        self.main.shows_page("the group", TRIP, lambda: self.main.click(View.TRIP_ROW))
        centre = View.FRAME_CENTRE
        self.main.shows("the photograph", {centre: color_of(2)}, lambda: self.main.click(View.cell(1), times=2))
        self.main.shows("text boxes", {(690, 379): WHITE}, lambda: self.main.click(LOW_EDIT_BUTTON))
        until("the title", lambda: self.main.has_ink((228, 522), 96), lambda: self.main.do({TITLE: "Abend am See"}))
        info, line = self.library.infos / f"{NAMES[2]}.info", b"\r\nTITLE=Abend am See\r\n"
        until("the title saved", lambda: line in info.read_bytes(), lambda: self.main.click(RAISED_EDIT_BUTTON))
        self.main.shows("the next one", {centre: color_of(40)}, lambda: self.main.click(View.NEXT))
        self.main.shows("the clip a moment later", {centre: WHITE})


def half_hour(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        user = User(desktop, library, program)
        user.take_in()
        user.make_groups()
        user.describe()
        desktop.close(user.main.window)
        equal("exit code after the close box", program.wait(), 0)
    for name in NAMES:
        equal(f"{name} at the end", (library.photos / name).read_bytes(), (library.camera / name).read_bytes())
    equal("the log", (library.root / "Trovarium.Log").exists(), False)


def prepare(library: Library) -> None:
    """What the user has: a camera's photographs and clips."""
    for number, name in enumerate(NAMES):
        make(library.camera / name, number)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as own, VirtualDesktop() as screen:
        album = Library(Path(own), Path(sys.argv[1]).resolve())
        prepare(album)
        half_hour(screen, album)
