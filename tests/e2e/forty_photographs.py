"""An empty folder, forty photographs dropped into it by hand, and the window at work on them, through four starts.

    forty_photographs.py PROGRAM
"""

from __future__ import annotations

import struct
from typing import Callable

from harness import ALL_PHOTOS, Colours, Library, MainWindow, Place, colour_of, equal
from harness import make_photograph, scenario, unchanged
from virtual_desktop import VirtualDesktop

COUNT = 40
NAMES = [f"Photo {number:02}.jpg" for number in range(COUNT)]
FIRST_DATE = 1_000_000_000.75  # the fraction has to go: thumbnails are dated to the second
EVENS = list(range(0, 36, 2))  # a group of two pages


def size_of(number: int) -> tuple[int, int]:
    """Width and height in pixels: landscape, portrait and square in turn."""
    return [(640, 480), (300, 400), (320, 320)][number % 3]


def first_start_makes_folders(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        equal("exit code of Exit on the File menu", program.exit(), 0)

    folders = {"Photos", "Photo_Thumbnails", "Photo_Info", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi", "Help"}
    equal("what stands in the library", {entry.name for entry in library.root.iterdir()}, folders | {"trovarium"})
    files = [file for folder in folders for file in (library.root / folder).rglob("*")]
    equal("the files in its folders", files, [library.groups / f"{ALL_PHOTOS}.lst"])
    equal("the all-photos group", library.group(ALL_PHOTOS), b"")


def next_start_makes_texts(desktop: VirtualDesktop, library: Library) -> None:
    for number, name in enumerate(NAMES):
        make_photograph(library.photos / name, number, *size_of(number), FIRST_DATE + 86_400 * number)
    with library.start(desktop) as program:
        window = MainWindow(desktop, program)
        window.shows_page("no thumbnail", [])
        equal("the open windows, without a notice", desktop.windows(), [window.window])
        desktop.close(window.window)
        equal("exit code after the close box", program.wait(), 0)

    equal("information files", sorted(file.name for file in library.infos.iterdir()), [n + ".info" for n in NAMES])
    inside = str(library.infos).replace("/", "\\")
    for name in NAMES:
        expected = [
            rf"PhotoPath=\Photos\{name}",
            "TITLE=/" + inside[1:] + rf"\{name}.info",
            "PHOTOGRAPHER=",
            "YEAR=",
            "PEOPLE=",
            "PLACE=",
            "EVENT=",
            "KEYWORDS=",
            "ImageWidth=",
            "ImageHeight=",
        ]
        text = (library.infos / f"{name}.info").read_bytes().decode("ascii")
        equal(f"the lines of {name}.info", text.split("\r\n"), expected + [""])
    equal("the all-photos group", library.group(ALL_PHOTOS), "".join(n + "\r\n" for n in NAMES).encode())
    equal("thumbnails after the first start", list(library.thumbnails.iterdir()), [])


def next_start_builds_thumbnails(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        window = MainWindow(desktop, program)
        window.shows_page("the first page of thumbnails", list(range(16)))
        equal("exit code of Exit on the File menu", program.exit(), 0)

    equal("thumbnails", sorted(file.name for file in library.thumbnails.iterdir()), NAMES)
    for number, name in enumerate(NAMES):
        thumbnail = library.thumbnails / name
        data = thumbnail.read_bytes()
        equal(f"the head of the thumbnail {name}", data[:2], b"BM")
        wide, high = struct.unpack_from("<ii", data, 18)
        width, height = size_of(number)
        longer = max(width, height)
        equal(f"the size of the thumbnail {name}", (wide, abs(high)), (100 * width // longer, 100 * height // longer))
        dates = [file.stat().st_mtime_ns / 1e9 for file in (thumbnail, library.photos / name)]
        equal(f"the date of the thumbnail {name}", dates[0], float(int(dates[1])))


def last_start_changes_nothing(desktop: VirtualDesktop, library: Library) -> None:
    infos, thumbnails = library.states(library.infos), library.states(library.thumbnails)
    photographs = library.states(library.photos)
    library.write_group("Evens", [NAMES[number] for number in EVENS])
    library.write_group("Lonely", [NAMES[1]])

    with library.start(desktop) as program:
        walk_through(MainWindow(desktop, program))
        equal("exit code of Exit on the File menu", program.exit(), 0)

    unchanged("information files", library.states(library.infos), infos)
    unchanged("thumbnails", library.states(library.thumbnails), thumbnails)
    unchanged("photographs", library.states(library.photos), photographs)


def walk_through(window: MainWindow) -> None:
    def press(place: Place) -> Callable[[], None]:
        return lambda: window.click(place)

    everything = list(range(COUNT))
    down = press(window.SCROLLBAR_DOWN)
    window.shows_page("all photographs, page 1", everything[:16])
    window.shows_page("all photographs, page 2", everything[16:32], down)
    window.shows_page("all photographs, page 3 with eight cells", everything[32:], down)
    window.shows_page("the group of evens, page 1", EVENS[:16], press(window.group_row(1)))
    window.shows_page("the group of evens, page 2 with two cells", EVENS[16:], down)
    window.shows_page("a group of one photograph", [1], press(window.group_row(2)))
    window.shows_page("all photographs again, on page 1", everything[:16], press(window.group_row(0)))

    # The photograph covers the middle of the frame; thumbnails leave a gap there.
    def photograph(number: int) -> Colours:
        return {window.FRAME_CENTRE: colour_of(number)}

    window.shows("the photograph of cell 5", photograph(5), lambda: window.double_click(window.cell(5)))
    for number in (6, 7, 8):
        window.shows(f"photograph {number} by Next", photograph(number), press(window.NEXT))
    window.shows("photograph 7 by Previous", photograph(7), press(window.PREVIOUS))


def play(desktop: VirtualDesktop, library: Library) -> None:
    first_start_makes_folders(desktop, library)
    next_start_makes_texts(desktop, library)
    next_start_builds_thumbnails(desktop, library)
    last_start_changes_nothing(desktop, library)


if __name__ == "__main__":
    scenario(play)
