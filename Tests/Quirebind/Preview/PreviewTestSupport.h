// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTest>
#include <QWidget>
#include <functional>
#include <string>

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"
#include "Platform/Files/OpenToRead.h"
#include "Platform/Files/URL.h"
#include "Quirebind/Preview/RenderService.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::previewtest {

/// Handles events until the condition holds; false after ten seconds.
[[nodiscard]] inline bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10000);
}

/// Documents that the stand-in renderer does something particular with, and one of itself.
struct Documents {
    /// Writes a document of that many pages; `behaviour` is explained in StandInRenderer.cpp.
    [[nodiscard]] URL make(const std::string& name, const std::string& behaviour,
                           int pages = 1) const {
        folder.write(name, test::simplePDF(pages) + "%behaviour " + behaviour + "\n");
        return URL::file(folder / name);
    }

    TemporaryFolder folder;
};

/// A renderer that stands in, which is patient for a short time only.
struct StandIn {
    RenderService service{QUIREBIND_STAND_IN_RENDERER,
                          RenderService::Patience{.wanted = 1500, .unwanted = 60}};
};

/// A file as a preview hands it to the renderer; owns nothing where there is none.
[[nodiscard]] inline FileDescriptor openFile(const URL& url) {
    return openToRead(url, FileSystem::native());
}

}  // namespace quirebind::previewtest
