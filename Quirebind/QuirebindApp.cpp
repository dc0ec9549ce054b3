// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/QuirebindApp.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QThread>
#include <algorithm>
#include <utility>

#include "Quirebind/Desktop/QtDesktop.h"
#include "Quirebind/Look/Texts.h"

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
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     &turns_, [this] { forgetClosed(); });
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
        // It is still in its own close event.
        .closed = [this](QWidget& window) { closed_.push_back(&window); }};
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

void QuirebindApp::forgetClosed() {
    // A menu, a drag and a panel run an event loop of their own inside a function of their window,
    // which goes on when that loop has ended.
    if (closed_.empty() || QThread::currentThread()->loopLevel() > 1) return;
    std::erase_if(windows_, [this](const auto& window) {
        return std::ranges::find(closed_, window.get()) != closed_.end();
    });
    closed_.clear();
}

}  // namespace quirebind
