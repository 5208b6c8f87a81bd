"""One long session with the mouse: select, rearrange, copy, edit, full screen, and the life of a group.

    hands_on.py PROGRAM
"""

from __future__ import annotations

from harness import ALL_PHOTOS, WHITE, YELLOW, Library, MainWindow, colour_of, equal, looks_like
from harness import make_photograph, scenario, unchanged
from virtual_desktop import Program, VirtualDesktop, Window, until

COUNT = 20  # two pages
NAMES = [f"Photo {number:02}.jpg" for number in range(COUNT)]
GROUP = "Holidays"
BACKWARDS = list(reversed(range(COUNT)))  # so that its pages look unlike those of all photographs
LOW_EDIT_BUTTON = (204 + 20 + 4 + 10, 40 + 454 + 7)
RAISED_EDIT_BUTTON = (204 + 20 + 4 + 10, 40 + 305 + 7)
TITLE = (224 + 480, 512 + 10)  # behind the text
TITLE_TEXT = [(x, 512 + 10) for x in range(224 + 4, 224 + 100)]


class Session:
    def __init__(self, desktop: VirtualDesktop, library: Library, program: Program) -> None:
        self.desktop = desktop
        self.library = library
        self.window = MainWindow(desktop, program)

    def holds(self, group: str, numbers: list[int]) -> None:
        expected = "".join(f"{NAMES[number]}\r\n" for number in numbers).encode()
        until(f"the list {group} to be {expected}", lambda: self.library.group(group) == expected)

    def open_group(self, row: int, numbers: list[int]) -> None:
        """A row whose group's first page differs from what is on show."""
        window = self.window
        window.shows_page(f"the group of row {row}", numbers, lambda: window.click(window.group_row(row)))

    def select(self, cell: int, held: str = "") -> None:
        window = self.window
        rim = {window.cell(cell, window.RIM): WHITE}
        window.shows(f"the frame around cell {cell}", rim, lambda: window.click(window.cell(cell), held))

    def answer(self, menu: str, entry: str, *keys: str) -> None:
        """Chooses an entry, and types into the box that it opens."""
        self.desktop.choose(self.window.window, menu, entry)

        def box() -> Window | None:
            return next((other for other in self.desktop.windows() if not other.is_main), None)

        self.desktop.dismiss(until("the question", box), *keys)

    # ---- the scenario ----

    def three_across_the_page_edge(self) -> None:
        window = self.window
        self.open_group(1, BACKWARDS[:16])
        self.select(1)
        self.select(3, "ctrl")
        # The press that drags is the third one selected; below the frame's edge the page turns.
        second = {window.cell(k): colour_of(number) for k, number in enumerate(BACKWARDS[16:])}
        way = [
            (window.cell(6, window.RIGHT_HALF), {window.cell(6, window.MARK_BEHIND): YELLOW}),
            ((window.cell(0)[0], 40 + 469 + 4), second),
            (window.cell(0, window.RIGHT_HALF), {window.cell(0, window.MARK_BEHIND): YELLOW}),
        ]
        window.drag(window.cell(5), *way, held="ctrl")
        # Behind the first photograph of the second page.
        order = [BACKWARDS[place] for place in (0, 2, 4, *range(6, 17), 1, 3, 5, 17, 18, 19)]
        self.holds(GROUP, order)
        window.shows_page("the second page in its new order", order[16:])

    def on_another_row(self) -> None:
        window = self.window
        mark = window.cell(0, window.MARK_BEHIND)  # gone while the pointer is beside the frame
        way = [(window.cell(0, window.RIGHT_HALF), {mark: YELLOW}), (window.group_row(2), {mark: None})]
        window.drag(window.cell(2), *way)
        self.holds("Other", [0, 1])

    def edit_and_full_screen(self) -> None:
        window = self.window
        photograph = {window.FRAME_CENTRE: colour_of(1)}
        self.open_group(2, [0, 1])
        window.shows("the photograph", photograph, lambda: window.double_click(window.cell(1)))
        window.shows("the box raised, with its text boxes", {TITLE: WHITE}, lambda: window.click(LOW_EDIT_BUTTON))

        def write_title() -> None:
            window.click(TITLE)
            self.desktop.type(window.window, "ctrl+a")
            self.desktop.act("type", "Abend am See")

        until("the title", lambda: any(max(ink) < 100 for ink in window.colours(TITLE_TEXT).values()), write_title)
        info = self.library.infos / f"{NAMES[1]}.info"
        until(
            "the new title in the file",
            lambda: b"\r\nTITLE=Abend am See\r\n" in info.read_bytes(),
            lambda: window.click(RAISED_EDIT_BUTTON),
        )

        def covers() -> Window | None:
            return next((other for other in self.desktop.windows() if other.width == 1280), None)

        full = until("the full screen", covers, lambda: self.desktop.type(window.window, "F11"))

        def is_filled() -> bool:
            picture = self.desktop.picture(full)
            return picture is not None and looks_like(picture.at(640, 512), colour_of(1))

        until("the photograph on it", is_filled)
        until("the way back", lambda: not covers(), lambda: self.desktop.mouse(full, 640, 512, "click", "1"))
        window.shows("the photograph again", photograph)

    def life_of_a_group(self) -> None:
        self.answer("f", "c", "ctrl+a", "Z", "o", "o", "Return")
        self.holds("Zoo", [])
        self.open_group(3, [])
        self.answer("f", "n", "ctrl+a", "Z", "o", "r", "n", "Return")
        self.holds("Zorn", [])
        equal("the list under its old name", (self.library.groups / "Zoo.lst").exists(), False)
        self.open_group(2, [0, 1])
        self.open_group(3, [])  # the question is for the row pressed last
        self.answer("f", "r", "alt+y")
        until("the list to go", lambda: self.library.group("Zorn") is None)

    def out_of_the_program(self) -> None:
        self.open_group(2, [0, 1])
        self.select(1)
        self.answer("e", "p", "alt+y")
        self.holds("Other", [0])
        self.window.shows_page("the group without it", [0])
        equal("the photograph in its folder", (self.library.photos / NAMES[1]).exists(), False)
        equal("the one set aside", (self.library.photos / "Removed" / NAMES[1]).exists(), True)
        self.holds(ALL_PHOTOS, [number for number in range(COUNT) if number != 1])


def play(desktop: VirtualDesktop, library: Library) -> None:
    library.photos.mkdir()
    for number, name in enumerate(NAMES):
        make_photograph(library.photos / name, number, 400, 400, 1_000_000_000)
    library.take_in(NAMES)
    library.write_group(GROUP, (NAMES[number] for number in BACKWARDS))
    library.write_group("Other", NAMES[:1])
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        photographs = library.states(library.photos)
        session = Session(desktop, library, program)
        session.three_across_the_page_edge()
        session.on_another_row()
        session.edit_and_full_screen()
        session.life_of_a_group()
        session.out_of_the_program()
        equal("exit code of Exit on the File menu", program.exit(), 0)
    del photographs[NAMES[1]]
    unchanged("the other photographs", library.states(library.photos), photographs)


if __name__ == "__main__":
    scenario(play)
