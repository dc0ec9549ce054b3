# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Waiting for what shall become true. No test sleeps for a fixed time: a machine that is busy makes
every such time too short, one that is idle wastes it."""

import time
from typing import Callable, TypeVar, Union

T = TypeVar("T")


class NotYet(Exception):
    """What was looked at is not there (any more). Wherever somebody waits, this means: look
    again."""


def wait_for(condition: Callable[[], T], timeout: float = 30.0,
             message: Union[str, Callable[[], str]] = "", interval: float = 0.02) -> T:
    """Polls until `condition` gives something true, and returns that. Where it does not in time, an
    AssertionError with the message; a callable message is asked then, to tell what was there
    instead."""
    deadline = time.monotonic() + timeout
    missing = ""
    while True:
        try:
            result = condition()
            if result:
                return result
            missing = ""
        except NotYet as gone:
            missing = f" ({gone})"
        if time.monotonic() >= deadline:
            break
        time.sleep(interval)
    text = message() if callable(message) else message
    raise AssertionError(f"after {timeout:g} s still not: {text or 'what was waited for'}{missing}")
