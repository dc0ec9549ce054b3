# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Starting processes so that none of them can be left behind, whatever happens to the test.

Four nets, because a daemon may be started by another daemon and a test may be killed:

* every process is a child that is ended by its id;
* the environment of every process carries a mark of its desktop, which all its descendants inherit,
  also those that detach themselves (daemons that a bus activates): whoever still carries the mark
  in the end is ended too;
* the kernel ends the children where the test process is killed (PR_SET_PDEATHSIG). Mind that it
  does so when the *thread* that started them ends: start processes on the main thread;
* a guard waits for the end of the test process, and then ends whoever carries the mark: a daemon that
  is only just being started outlives the one that starts it.
"""

import ctypes
import os
import signal
import subprocess
import sys
import time
from pathlib import Path
from typing import IO, Mapping, Optional, Sequence, Union

MARK = "QUIREBIND_TEST_DESKTOP"

Output = Union[None, int, IO[bytes]]


def adopt_orphans() -> None:
    """Lets descendants whose parent has ended become children of this process, so that it can reap
    them: the first process of a container often reaps nothing, and zombies would pile up."""
    pr_set_child_subreaper = 36
    ctypes.CDLL(None).prctl(pr_set_child_subreaper, 1, 0, 0, 0)


def start(arguments: Sequence[Union[str, bytes, Path]], environment: Mapping[str, str],
          stdin: Output = subprocess.DEVNULL, stdout: Output = subprocess.DEVNULL,
          stderr: Output = subprocess.DEVNULL, pass_fds: Sequence[int] = (),
          working_folder: Optional[Path] = None) -> "subprocess.Popen[bytes]":
    """Starts a child in a session of its own, so that a Ctrl-C meant for the test does not end the
    desktop under it before the test could tidy up. Ends with SIGTERM where this process is killed:
    the X server removes its lock file then."""
    return subprocess.Popen(["setpriv", "--pdeathsig", "TERM", "--", *arguments],
                            env=dict(environment), stdin=stdin, stdout=stdout, stderr=stderr,
                            pass_fds=tuple(pass_fds), start_new_session=True, cwd=working_folder)


def guard(mark: str) -> "subprocess.Popen[bytes]":
    """Starts a process that ends all that carry the mark once this process has ended, or once its
    standard input is closed."""
    script = (f"import sys; sys.path.insert(0, {str(Path(__file__).parents[1])!r})\n"
              "from driver import processes\n"
              f"sys.stdin.read(); processes.end_marked({mark!r})")
    return subprocess.Popen([sys.executable, "-c", script], stdin=subprocess.PIPE,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                            start_new_session=True)


def end(process: "subprocess.Popen[bytes]", patience: float = 5.0) -> int:
    """Asks the process to end, insists after `patience` seconds, and returns its exit code."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
    return process.wait()


def marked(mark: str) -> list[int]:
    """The ids of all processes that carry the mark."""
    wanted = f"{MARK}={mark}".encode()
    found = []
    for entry in os.listdir("/proc"):
        if not entry.isdigit() or int(entry) == os.getpid():
            continue
        try:
            environment = Path("/proc", entry, "environ").read_bytes()
        except OSError:  # ended just now, or not ours
            continue
        if wanted in environment.split(b"\0"):
            found.append(int(entry))
    return found


def end_marked(mark: str, patience: float = 5.0) -> None:
    """Ends and reaps all processes that carry the mark, also those that they start meanwhile."""
    began = time.monotonic()
    ended: set[int] = set()
    while remaining := marked(mark):
        ended.update(remaining)
        insist = time.monotonic() - began > patience
        for process_id in remaining:
            try:
                os.kill(process_id, signal.SIGKILL if insist else signal.SIGTERM)
            except ProcessLookupError:
                pass
        time.sleep(0.01)
    for process_id in ended:
        try:
            os.waitpid(process_id, 0)
        except ChildProcessError:  # its own parent has reaped it
            pass
