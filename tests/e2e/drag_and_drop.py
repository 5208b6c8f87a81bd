"""Thumbnails dragged to another place in their group, and on another group's row.

    drag_and_drop.py PROGRAM
"""

from __future__ import annotations

from harness import ALL_PHOTOS, Library, MainWindow, colour_of, equal, make_photograph, scenario
from virtual_desktop import VirtualDesktop, until

COUNT = 5
NAMES = [f"Photo {number}.jpg" for number in range(COUNT)]
GROUP = "Holidays"


def lines(library: Library, group: str) -> list[str]:
    return library.group(group).decode().split("\r\n")[:-1]


def group_becomes(library: Library, group: str, numbers: list[int]) -> None:
    expected = [NAMES[number] for number in numbers]
    try:
        until(f"the list {group}", lambda: lines(library, group) == expected, 20)
    except AssertionError as failure:
        raise AssertionError(f"{failure}\n  seen:     {lines(library, group)}\n  expected: {expected}") from None


def play(desktop: VirtualDesktop, library: Library) -> None:
    library.photos.mkdir()
    for number, name in enumerate(NAMES):
        make_photograph(library.photos / name, number, 400, 400, 1_000_000_000)
    library.take_in(NAMES)
    library.write_group(GROUP, NAMES)

    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        window = MainWindow(desktop, program)

        def page_shows(what: str, numbers: list[int]) -> None:
            shown = {window.cell(index): colour_of(number) for index, number in enumerate(numbers)}
            window.shows(what, {**shown, window.cell(len(numbers)): None})

        window.click(window.group_row(1))
        page_shows("the group in its order", [0, 1, 2, 3, 4])

        # Into the right half of the third cell: behind it.
        x, y = window.cell(2)
        window.drag(window.cell(0), (x - 40, y), (x + 20, y + 5), (x + 30, y + 5))
        page_shows("the first photograph behind the third", [1, 2, 0, 3, 4])
        group_becomes(library, GROUP, [1, 2, 0, 3, 4])

        # Into the left half of the first cell: in front of it.
        x, y = window.cell(0)
        window.drag(window.cell(4), (x, y + 50), (x - 20, y + 5), (x - 30, y + 5))
        page_shows("the last photograph in front", [4, 1, 2, 0, 3])
        group_becomes(library, GROUP, [4, 1, 2, 0, 3])

        # From the group of all photographs on the other's row: copied there.
        window.click(window.group_row(0))
        page_shows("all photographs", [0, 1, 2, 3, 4])
        x, y = window.group_row(1)
        window.drag(window.cell(3), (x + 90, y), (x, y + 2), (x + 2, y))
        group_becomes(library, GROUP, [4, 1, 2, 0, 3, 3])
        group_becomes(library, ALL_PHOTOS, [0, 1, 2, 3, 4])
        equal("exit code of Exit on the File menu", program.exit(), 0)


if __name__ == "__main__":
    scenario(play)
