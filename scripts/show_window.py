# SPDX-License-Identifier: GPL-3.0-or-later

"""Starts the program where there is no display, saves a picture of its window, and ends it by its own Exit.

    python3 scripts/show_window.py LIBRARY/trovarium PICTURE.png

XDG_CONFIG_HOME names the folder of the settings.
"""

from __future__ import annotations

import os
import sys
from pathlib import Path

from virtual_desktop import Program, VirtualDesktop

# The first start on new photographs builds their thumbnails before the main window comes.
FIRST_START = 600.0


def notice_is_due() -> bool:
    settings = Path(os.environ["XDG_CONFIG_HOME"]).glob("OmbrelaneWorks/*")
    return not any("FirstTime=False" in file.read_text(errors="replace") for file in settings if file.is_file())


def main() -> int:
    link, picture = Path(sys.argv[1]), Path(sys.argv[2])
    print("There is no display: Trovarium is shown in a virtual one.")
    first_time = notice_is_due()
    with VirtualDesktop() as desktop, Program(desktop, link) as program:
        program.main_window(FIRST_START)
        if first_time:
            program.close_notice()
        window = program.main_window()
        desktop.save_picture(window, picture)
        code = program.exit()
    print(f"The window is in {picture}; the program ended with exit code {code}.")
    return code


if __name__ == "__main__":
    sys.exit(main())
