// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QCoreApplication>

#include "Quirebind/RenderProtocol/RenderProtocol.h"
#include "Quirebind/Renderer/Confinement.h"
#include "Quirebind/Renderer/RendererSession.h"

/// The helper that draws pages for the preview. It is started by the program, with a socket, and is
/// of no use to anyone else. Only builds with a sanitizer run it unconfined.
int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
#ifndef QUIREBIND_UNCONFINED
    quirebind::confine();
#endif
    quirebind::RendererSession(quirebind::render::kSocket).run();
    return 0;
}
