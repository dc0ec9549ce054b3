// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "Quirebind/Desktop/QtMainThread.h"
#include "Quirebind/Desktop/UserLanguage.h"
#include "Quirebind/Look/Appearance.h"
#include "Quirebind/Preview/RenderService.h"
#include "Quirebind/Views/MainWindow.h"
#include "Quirebind/Workflow/BackgroundWork.h"

namespace quirebind {

/// The application: one group of windows, each with a state of its own, and what they share. Needs
/// a QApplication. Main thread only.
class QuirebindApp {
 public:
    /// Opens the first window. `merge` is PDFMerger::merge, or what stands in for it in tests.
    /// `renderer` is the path of the program that draws pages; the installed one where it is empty.
    explicit QuirebindApp(std::function<void(std::span<const URL>, const URL&)> merge,
                          const std::string& renderer = {});

    /// Opens another window, with an empty list.
    void openWindow();
    /// Closes every window; those that merge close when they are done. The event loop ends with the
    /// last one.
    void quit();

 private:
    /// Destroys the windows that were closed, unless something of them may still be running.
    void forgetClosed();

    UserLanguage language_;  // before anything takes a text
    std::function<void(std::span<const URL>, const URL&)> merge_;
    QtMainThread mainThread_;
    BackgroundWork background_;  // waits in its destructor, when the windows are gone already
    Appearance appearance_;
    RenderService renderer_;
    std::vector<std::unique_ptr<MainWindow>> windows_;
    std::vector<const QWidget*> closed_;  // of those; they do not show any more
    QObject turns_;                       // is told when the event loop has nothing left to do
};

}  // namespace quirebind
