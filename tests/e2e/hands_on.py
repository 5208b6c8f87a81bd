"""One long session with the mouse: select, rearrange, copy, edit, full screen, and the life of a group.

    hands_on.py PROGRAM
"""

from __future__ import annotations

from harness import ALL_PHOTOS, Library, MainWindow, colour_of, equal, make_photograph, scenario, unchanged
from virtual_desktop import Program, VirtualDesktop, Window, until

COUNT = 20  # two pages
NAMES = [f"Photo {number:02}.jpg" for number in range(COUNT)]
GROUP = "Holidays"
LOW_EDIT_BUTTON = (204 + 20 + 4 + 10, 40 + 454 + 7)
RAISED_EDIT_BUTTON = (204 + 20 + 4 + 10, 40 + 305 + 7)
TITLE = (224 + 480, 512 + 10)  # behind the text


def lines(library: Library, group: str) -> list[str]:
    return library.group(group).decode().split("\r\n")[:-1]


def holds(library: Library, group: str, numbers: list[int]) -> None:
    expected = [NAMES[number] for number in numbers]
    until(f"the list {group} to be {expected}", lambda: lines(library, group) == expected, 20)


class Session:
    def __init__(self, desktop: VirtualDesktop, library: Library, program: Program) -> None:
        self.desktop = desktop
        self.library = library
        self.program = program
        self.window = MainWindow(desktop, program)

    def page_shows(self, what: str, numbers: list[int]) -> None:
        cells = {self.window.cell(k): colour_of(numbers[k]) if k < len(numbers) else None for k in range(16)}
        self.window.shows(what, cells)

    def choose(self, menu: str, entry: str) -> None:
        """By the access keys of the menu bar."""
        self.desktop.activate(self.program.main_window())
        self.desktop.key("alt+" + menu)
        until("the menu", self.desktop.popups)
        self.desktop.key(entry)

    def dialog(self, what: str) -> Window:
        def found() -> Window | None:
            return next((window for window in self.desktop.windows() if not window.is_main), None)

        window = until(what, found)
        self.desktop.activate(window)
        return window

    def answer(self, what: str, *keys: str) -> None:
        """Types into the box that comes, and waits until it is gone."""
        window = self.dialog(what)
        self.desktop.key(*keys)
        until(f"{what} to go", lambda: all(other.id != window.id for other in self.desktop.windows()))

    # ---- the scenario ----

    def three_across_the_page_edge(self) -> None:
        window = self.window
        window.click(window.group_row(1))
        self.page_shows("the group, page 1", list(range(16)))
        window.click(window.cell(1))
        with_key(self.desktop, "ctrl", lambda: window.click(window.cell(3)))
        # The press that drags is the third one selected; below the frame's edge the page turns.
        x, y = window.cell(0)
        below = (x, 40 + 469 + 4)
        way = [window.cell(5), below, (x + 35, y + 5), (x + 40, y + 5)]
        with_key(self.desktop, "ctrl", lambda: window.drag(*way))
        # Behind the first photograph of the second page, which is number 16.
        order = [0, 2, 4, *range(6, 17), 1, 3, 5, 17, 18, 19]
        holds(self.library, GROUP, order)
        self.page_shows("the second page in its new order", order[16:])

    def on_another_row(self) -> None:
        window = self.window
        x, y = window.group_row(2)
        window.drag(window.cell(2), (x + 90, y), (x, y + 2), (x + 2, y))
        holds(self.library, "Other", [0, 18])

    def edit_and_full_screen(self) -> None:
        window = self.window
        window.click(window.group_row(2))
        self.page_shows("the other group", [0, 18])
        window.double_click(window.cell(1))
        window.shows("the photograph", {window.FRAME_CENTRE: colour_of(18)})
        window.click(LOW_EDIT_BUTTON)
        until("the box to be raised, with its text boxes", lambda: window.colour(TITLE) == (255, 255, 255), 20)
        window.click(TITLE)
        self.desktop.key("ctrl+a")
        self.desktop.act("type", "Abend am See")
        window.click(RAISED_EDIT_BUTTON)
        info = self.library.infos / f"{NAMES[18]}.info"
        until("the new title in the file", lambda: b"\r\nTITLE=Abend am See\r\n" in info.read_bytes(), 20)

        main = self.program.main_window()
        self.desktop.activate(main)
        self.desktop.key("F11")

        def covers() -> Window | None:
            return next((other for other in self.desktop.windows() if other.width >= 1280 and other.height >= 1024), None)

        full = until("the full screen", covers)
        middle = (full.width // 2, full.height // 2)
        until("the photograph on it", lambda: near(self.desktop, full, middle, colour_of(18)), 20)
        self.desktop.click(full, *middle)
        until("the way back", lambda: covers() is None, 20)
        window.shows("the photograph again", {window.FRAME_CENTRE: colour_of(18)})

    def life_of_a_group(self) -> None:
        self.choose("f", "c")
        self.answer("the question for a name", "ctrl+a", "Z", "o", "o", "Return")
        holds(self.library, "Zoo", [])
        self.window.click(self.window.group_row(3))
        self.choose("f", "n")
        self.answer("the question for another name", "Z", "o", "r", "n", "Return")
        holds(self.library, "Zorn", [])
        equal("the list under its old name", (self.library.groups / "Zoo.lst").exists(), False)
        self.window.click(self.window.group_row(3))  # the question is for the row pressed last
        self.choose("f", "r")
        self.answer("the question", "alt+y")
        until("the list to go", lambda: not (self.library.groups / "Zorn.lst").exists(), 20)

    def out_of_the_program(self) -> None:
        window = self.window
        window.click(window.group_row(2))
        self.page_shows("the other group", [0, 18])
        window.click(window.cell(1))
        self.choose("e", "p")
        self.answer("the question", "alt+y")
        holds(self.library, "Other", [0])
        self.page_shows("the group without it", [0])
        equal("the photograph in its folder", (self.library.photos / NAMES[18]).exists(), False)
        equal("the one set aside", (self.library.photos / "Removed" / NAMES[18]).exists(), True)
        holds(self.library, ALL_PHOTOS, [number for number in range(COUNT) if number != 18])


def with_key(desktop: VirtualDesktop, key: str, act) -> None:
    desktop.act("keydown", key)
    try:
        act()
    finally:
        desktop.act("keyup", key)


def near(desktop: VirtualDesktop, window: Window, place: tuple[int, int], colour: tuple[int, int, int]) -> bool:
    picture = desktop.picture(window)
    return bool(picture) and all(abs(one - other) <= 24 for one, other in zip(picture.at(*place), colour))


def play(desktop: VirtualDesktop, library: Library) -> None:
    library.photos.mkdir()
    for number, name in enumerate(NAMES):
        make_photograph(library.photos / name, number, 400, 400, 1_000_000_000)
    library.take_in(NAMES)
    library.write_group(GROUP, NAMES)
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
    del photographs[NAMES[18]]
    unchanged("the other photographs", library.states(library.photos), photographs)


if __name__ == "__main__":
    scenario(play)
