# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What the figures were measured on."""

import os
import platform
import re
import subprocess
from pathlib import Path


def description(disk: Path) -> dict[str, str]:
    """The machine, by what is said of it; `disk` is the folder of the sources."""
    return {
        "processor": _processor(),
        "cores": str(len(os.sched_getaffinity(0))),
        "memory": f"{os.sysconf('SC_PAGE_SIZE') * os.sysconf('SC_PHYS_PAGES') / (1 << 30):.0f} GB",
        "system": f"{_distribution()}, Linux {platform.release()}",
        "file system": _file_system(disk),
        "load when it began": f"{os.getloadavg()[0]:.1f}",
    }


def _processor() -> str:
    found = re.search(r"^model name\s*:\s*(.+)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    return found[1] if found else platform.machine()


def _distribution() -> str:
    try:
        return platform.freedesktop_os_release()["PRETTY_NAME"]
    except OSError:
        return "unknown"


def _file_system(folder: Path) -> str:
    return subprocess.run(["stat", "-f", "-c", "%T", str(folder)], capture_output=True, text=True,
                          check=True).stdout.strip()
