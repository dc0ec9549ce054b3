# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Drives the real program the way a person does: real keys and a real pointer on a virtual desktop,
and what is on the screen read through the accessibility bus, as a screen reader does.

Nothing in here knows what the program is; that is in window_test_case.py.
"""
