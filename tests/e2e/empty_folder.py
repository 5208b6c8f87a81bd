"""The program in an empty folder: what it makes there, what it leaves alone, and the notice that comes once.

    empty_folder.py PROGRAM
"""

from __future__ import annotations

from harness import ALL_PHOTOS, Library, MainWindow, equal, scenario
from virtual_desktop import VirtualDesktop

FOLDERS = {"Photos", "Photo_Thumbnails", "Photo_Info", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi", "Help"}


def check_folder(library: Library) -> None:
    equal("what stands in the library", {entry.name for entry in library.root.iterdir()}, FOLDERS | {"trovarium"})
    files = [file for folder in FOLDERS for file in (library.root / folder).rglob("*")]
    equal("the files in its folders", files, [library.groups / f"{ALL_PHOTOS}.lst"])
    equal("the all-photos group", library.group(ALL_PHOTOS), b"")


def play(desktop: VirtualDesktop, library: Library) -> None:
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        equal("exit code of Exit on the File menu", program.exit(), 0)
    check_folder(library)

    with library.start(desktop) as program:
        window = MainWindow(desktop, program)
        window.shows("no thumbnail", {window.cell(index): None for index in range(16)})
        # A notice would have closed the window to the mouse: a press shows that there is none.
        window.click(window.group_row(0))
        equal("the open windows", [found.is_main for found in desktop.windows()], [True])
        desktop.close(program.main_window())
        equal("exit code after the close box", program.wait(), 0)
    check_folder(library)


if __name__ == "__main__":
    scenario(play)
