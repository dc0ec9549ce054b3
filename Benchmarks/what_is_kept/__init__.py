# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What programs that join PDF documents keep of them, found by joining small documents and looking
at what came out with other programs."""
