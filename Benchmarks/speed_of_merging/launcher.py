# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A program that runs one command and says what it cost: it reads a Job as JSON on its standard
input and prints a Cost.

It is a process of its own because the peak memory of a command counts from the process that started
it, which must therefore be a small one.
"""

import json
import os
import resource
import select
import signal
import sys
import time


def main() -> None:
    job = json.load(sys.stdin)
    _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))  # some keep all sources open
    os.chdir(job["folder"])
    create = os.O_WRONLY | os.O_CREAT | os.O_TRUNC
    files = [(os.POSIX_SPAWN_OPEN, 0, os.devnull, os.O_RDONLY, 0),
             (os.POSIX_SPAWN_OPEN, 1, job["output"], create, 0o644),
             (os.POSIX_SPAWN_OPEN, 2, job["errors"], create, 0o644)]
    start = time.perf_counter()
    child = os.posix_spawnp(job["command"][0], job["command"], os.environ, file_actions=files,
                            setpgroup=0)
    try:
        done, _, _ = select.select([os.pidfd_open(child)], [], [], job["limit"])
    except BaseException:
        os.killpg(child, signal.SIGKILL)
        raise
    if not done:
        os.killpg(child, signal.SIGKILL)  # its own group: some are scripts that start others
    _, status, usage = os.wait4(child, 0)
    print(json.dumps({"wall": time.perf_counter() - start,
                      "cpu": usage.ru_utime + usage.ru_stime,
                      "peak": usage.ru_maxrss * 1024,
                      "status": os.waitstatus_to_exitcode(status),
                      "stopped": not done}))


if __name__ == "__main__":
    main()
