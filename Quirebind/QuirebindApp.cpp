// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/QuirebindApp.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <algorithm>
#include <utility>

#include "Quirebind/Desktop/QtDesktop.h"
#include "Quirebind/Views/Texts.h"

namespace quirebind {

namespace {

/// The helper lies beside the program where it was built, and in libexec once it is installed.
std::string rendererProgram() {
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString name = QStringLiteral("quirebind-renderer");
    const QString built = folder.filePath(name);
    const QString installed = folder.filePath(QStringLiteral("../libexec/quirebind/") + name);
    return QFile::encodeName(QFile::exists(built) ? built : installed).toStdString();
}

}  // namespace

QuirebindApp::QuirebindApp(std::function<void(std::span<const URL>, const URL&)> merge,
                           const std::string& renderer)
    : merge_(std::move(merge)), renderer_(renderer.empty() ? rendererProgram() : renderer) {
    QApplication::setApplicationName(QStringLiteral("Quirebind"));
    QApplication::setApplicationDisplayName(text::applicationName());
    QApplication::setDesktopFileName(QStringLiteral(QUIREBIND_APP_ID));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/quirebind.svg")));
    QtDesktop::keepNothing();
    openWindow();
    // Once the window shows: the first page to be looked at should not wait for it.
    mainThread_.post([this] { renderer_.warmUp(); });
}

void QuirebindApp::openWindow() {
    mainThread_.check();
    const WindowServices services{
        .mainThread = mainThread_,
        .background = background_,
        .renderer = renderer_,
        .merge = merge_,
        .makeDesktop = [](QWidget& window) { return std::make_unique<QtDesktop>(window); },
        .openWindow = [this] { openWindow(); },
        .quit = [this] { quit(); },
        .closed =
            [this](QWidget& window) {
                // It is still in its own close event.
                mainThread_.post([this, &window] { forget(window); });
            }};
    windows_.push_back(std::make_unique<MainWindow>(services));
    windows_.back()->show();
}

void QuirebindApp::quit() {
    mainThread_.check();
    std::vector<MainWindow*> open;
    open.reserve(windows_.size());
    for (const auto& window : windows_) open.push_back(window.get());
    for (MainWindow* window : open) window->close();
}

void QuirebindApp::forget(const QWidget& window) {
    std::erase_if(windows_, [&](const auto& held) { return held.get() == &window; });
}

}  // namespace quirebind
