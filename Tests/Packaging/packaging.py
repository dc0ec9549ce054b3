# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What the tests of packaging share: where things are, and the files that an installation of the
application consists of."""

import os
import subprocess
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent.parent
BUILD = Path(os.environ["QUIREBIND_BUILD"])
CMAKE = os.environ["QUIREBIND_CMAKE"]
APP_ID = os.environ["QUIREBIND_APP_ID"]
VERSION = os.environ["QUIREBIND_VERSION"]
RELEASE_DATE = os.environ["QUIREBIND_RELEASE_DATE"]

ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
_THEME = "share/icons/hicolor"
DESKTOP_ENTRY = f"share/applications/{APP_ID}.desktop"
METAINFO = f"share/metainfo/{APP_ID}.metainfo.xml"
MANUAL_PAGE = "share/man/man1/quirebind.1"
ICONS = {size: f"{_THEME}/{size}x{size}/apps/{APP_ID}.png" for size in ICON_SIZES}

FILES = {
    "bin/quirebind",
    "libexec/quirebind/quirebind-renderer",
    DESKTOP_ENTRY,
    METAINFO,
    MANUAL_PAGE,
    f"{_THEME}/scalable/apps/{APP_ID}.svg",
    f"{_THEME}/symbolic/apps/{APP_ID}-symbolic.svg",
    *ICONS.values(),
}


def run(*arguments: object, **options: object) -> str:
    """Runs a tool, and returns all that it says. Fails telling that where the tool fails."""
    words = [str(argument) for argument in arguments]
    result = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            check=False, **options)  # type: ignore[call-overload]
    assert result.returncode == 0, f"{' '.join(words)}: {result.returncode}\n{result.stdout}"
    return str(result.stdout)


def files_below(folder: Path) -> set[str]:
    """The files in a folder and those below it, by their path in there."""
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}
