// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <thread>

#include "Quirebind/QuirebindApp.h"
#include "QuirebindCore/PDFMerger.h"

// The program itself, but for its merge, which a test can hold as long as it likes to look at what
// the window does meanwhile: it begins only once no file named "hold" lies beside the destination.

namespace {

void heldMerge(std::span<const quirebind::URL> sources, const quirebind::URL& destination) {
    const std::filesystem::path path{std::string(destination.path())};
    const std::filesystem::path hold = path.parent_path() / "hold";
    while (std::filesystem::exists(hold)) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    quirebind::PDFMerger::merge(sources, destination);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const quirebind::QuirebindApp app(heldMerge, QUIREBIND_RENDERER);
    return QApplication::exec();
}
