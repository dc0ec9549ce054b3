# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""How fast programs join PDF documents, how much memory they take for it and how large their output
is, each beside what it costs to copy the same bytes; and what somebody waits for at our window."""
