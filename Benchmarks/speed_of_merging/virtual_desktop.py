# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A program that runs commands one after the other on a virtual desktop of their own: it reads a list
of commands as JSON on its standard input and prints what each of them printed, as a list, too.

It is a process of its own because the desktop needs modules that only Debian's own Python has.
"""

import json
import subprocess
import sys
from pathlib import Path
from typing import Sequence

_ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(_ROOT / "Tests" / "Quirebind" / "Window"))
sys.dont_write_bytecode = True

from driver.desktop import Desktop  # noqa: E402

_LONGEST = 600  # seconds for a command


def main() -> None:
    commands = json.load(sys.stdin)
    with Desktop() as desktop:
        home = desktop.new_home()
        print(json.dumps([_output(desktop, home, command) for command in commands]))


def _output(desktop: Desktop, home: Path, command: Sequence[str]) -> str:
    process = desktop.start_process(
        command, desktop.environment(home, {"QT_QPA_PLATFORM": "xcb"}),
        stdout=subprocess.PIPE, stderr=sys.stderr.fileno(), working_folder=home)
    try:
        printed, _ = process.communicate(timeout=_LONGEST)
    finally:
        status = desktop.end_process(process)
    if status != 0:
        sys.exit(f"{command[0]} ended with the exit status {status}")
    return printed.decode()


if __name__ == "__main__":
    main()
