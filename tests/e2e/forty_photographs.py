"""Forty photographs dropped into the folder by hand, through three starts, and the window at work on them.

    forty_photographs.py PROGRAM
"""

from __future__ import annotations

import struct

from harness import ALL_PHOTOS, Library, MainWindow, colour_of, equal, make_photograph, scenario, unchanged
from virtual_desktop import Program, VirtualDesktop

COUNT = 40
NAMES = [f"Photo {number:02}.jpg" for number in range(COUNT)]
FIRST_DATE = 1_000_000_000.75  # the fraction has to go: thumbnails are dated to the second
EVENS = list(range(0, 36, 2))  # a group of two pages


def size_of(number: int) -> tuple[int, int]:
    """Width and height in pixels: landscape, portrait and square in turn."""
    return [(640, 480), (300, 400), (320, 320)][number % 3]


def drop_in(library: Library) -> None:
    library.photos.mkdir()
    for number, name in enumerate(NAMES):
        make_photograph(library.photos / name, number, *size_of(number), FIRST_DATE + 86_400 * number)


def end(program: Program) -> None:
    equal("exit code of Exit on the File menu", program.exit(), 0)


def first_start_makes_texts(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        end(program)

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
    left = {entry.name for entry in library.root.iterdir()}
    folders = {"Photos", "Photo_Thumbnails", "Photo_Info", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi", "Help"}
    equal("what stands in the library", left, folders | {"trovarium"})


def second_start_builds_thumbnails(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        window = MainWindow(desktop, program)
        window.shows("the first page of thumbnails", {window.cell(k): colour_of(k) for k in range(16)})
        end(program)

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


def third_start_changes_nothing(desktop: VirtualDesktop, library: Library) -> None:
    infos, thumbnails = library.states(library.infos), library.states(library.thumbnails)
    photographs = library.states(library.photos)
    library.write_group("Evens", [NAMES[number] for number in EVENS])
    library.write_group("Lonely", [NAMES[1]])

    with library.start(desktop) as program:
        window = MainWindow(desktop, program)
        walk_through(window)
        end(program)

    unchanged("information files", library.states(library.infos), infos)
    unchanged("thumbnails", library.states(library.thumbnails), thumbnails)
    unchanged("photographs", library.states(library.photos), photographs)


def walk_through(window: MainWindow) -> None:
    def page_of(numbers: list[int], page: int) -> dict:
        shown = numbers[16 * (page - 1) : 16 * page]
        return {window.cell(k): colour_of(shown[k]) if k < len(shown) else None for k in range(16)}

    everything = list(range(COUNT))
    window.shows("all photographs, page 1", page_of(everything, 1))
    window.click(window.SCROLLBAR_DOWN)
    window.shows("all photographs, page 2", page_of(everything, 2))
    window.click(window.SCROLLBAR_DOWN)
    window.shows("all photographs, page 3 with eight cells", page_of(everything, 3))

    window.click(window.group_row(1))
    window.shows("the group of evens, page 1", page_of(EVENS, 1))
    window.click(window.SCROLLBAR_DOWN)
    window.shows("the group of evens, page 2 with two cells", page_of(EVENS, 2))
    window.click(window.group_row(2))
    window.shows("a group of one photograph", page_of([1], 1))
    window.click(window.group_row(0))
    window.shows("all photographs again, on page 1", page_of(everything, 1))

    # The photograph covers the middle of the frame; thumbnails leave a gap there.
    window.double_click(window.cell(5))
    window.shows("the photograph of cell 5", {window.FRAME_CENTRE: colour_of(5)})
    for number in (6, 7, 8):
        window.click(window.NEXT)
        window.shows(f"photograph {number} by Next", {window.FRAME_CENTRE: colour_of(number)})
    window.click(window.PREVIOUS)
    window.shows("photograph 7 by Previous", {window.FRAME_CENTRE: colour_of(7)})


def play(desktop: VirtualDesktop, library: Library) -> None:
    drop_in(library)
    first_start_makes_texts(desktop, library)
    second_start_builds_thumbnails(desktop, library)
    third_start_changes_nothing(desktop, library)


if __name__ == "__main__":
    scenario(play)
