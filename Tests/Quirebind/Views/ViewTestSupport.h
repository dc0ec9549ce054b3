// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <functional>
#include <latch>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Quirebind/Desktop/QtMainThread.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"
#include "Quirebind/Views/MainWindow.h"
#include "QuirebindCore/PDFMerger.h"
#include "Tests/Quirebind/Workflow/WorkflowTestSupport.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::viewtest {

/// A merge that waits until the test lets it go on.
class HeldMerge {
 public:
    /// PDFMerger::merge, later. On a background thread.
    void operator()(std::span<const URL> sources, const URL& destination) {
        released_.wait();
        PDFMerger::merge(sources, destination);
    }
    /// Lets it go on. Once.
    void release() { released_.count_down(); }

 private:
    std::latch released_{1};
};

/// A window on a display that nobody sees, with a desktop that answers as the test says.
struct ShownWindow {
    /// Shown, active, and with nothing left to do; `merge` stands in for the one of the program.
    explicit ShownWindow(
        std::function<void(std::span<const URL>, const URL&)> merge = PDFMerger::merge)
        : window(std::make_unique<MainWindow>(
              WindowServices{.mainThread = mainThread,
                             .background = background,
                             .renderer = renderer,
                             .merge = std::move(merge),
                             .makeDesktop =
                                 [this](QWidget&) {
                                     auto made = std::make_unique<workflowtest::TestDesktop>();
                                     desktop = made.get();
                                     return made;
                                 },
                             .openWindow = [this] { ++windowsAskedFor; },
                             .quit = [this] { ++quitsAskedFor; },
                             .closed = [this](QWidget&) { closed = true; }})) {
        window->show();
        QApplication::setActiveWindow(window.get());
        settle();
    }

    /// Handles all events until none is waiting.
    static void settle() {
        for (int turn = 0; turn < 10; ++turn) QApplication::processEvents();
    }

    /// Handles events until the condition holds; false after ten seconds.
    [[nodiscard]] static bool waitFor(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 10000);
    }

    /// Writes documents of one page each and adds them.
    void add(const std::vector<std::string>& names) {
        std::vector<URL> urls;
        for (const std::string& name : names) {
            folder.write(name, test::simplePDF(1));
            urls.push_back(URL::file(folder / name));
        }
        window->state().importFiles(urls);
        settle();
    }

    /// The visible button with that text; none where there is none.
    [[nodiscard]] QPushButton* button(const char* text) const {
        for (QPushButton* button : window->findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == QString::fromUtf8(text)) return button;
        return nullptr;
    }

    /// Whether a visible label, or the message of the alert, shows exactly that.
    [[nodiscard]] bool says(const char* text) const {
        for (const QLabel* label : window->findChildren<QLabel*>())
            if (label->isVisible() && label->text() == QString::fromUtf8(text)) return true;
        for (const QTextEdit* message : window->findChildren<QTextEdit*>())
            if (message->isVisible() && message->toPlainText() == QString::fromUtf8(text))
                return true;
        return false;
    }

    /// The list of documents, which may be hidden.
    [[nodiscard]] QListView& list() const { return *window->findChild<QListView*>(); }

    /// The names in the list, as shown, one behind the other.
    [[nodiscard]] std::string rows() const {
        std::string result;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            result += list().model()->index(row, 0).data().toString().toStdString() + ' ';
        return result;
    }

    /// The alert, where one is shown.
    [[nodiscard]] ErrorAlert* alert() const {
        for (QDialog* dialog : window->findChildren<QDialog*>())
            if (auto* shown = dynamic_cast<ErrorAlert*>(dialog);
                shown != nullptr && shown->isVisible())
                return shown;
        return nullptr;
    }

    /// Whether nothing more of the page that is shown will be drawn.
    [[nodiscard]] bool previewHasSettled() const {
        for (const QAbstractScrollArea* area : window->findChildren<QAbstractScrollArea*>())
            if (const auto* preview = dynamic_cast<const PDFPreview*>(area))
                return preview->isSharp();
        return false;
    }

    TemporaryFolder folder;
    QtMainThread mainThread;
    BackgroundWork background;
    RenderService renderer{"/nowhere"};            // no page can be drawn
    workflowtest::TestDesktop* desktop = nullptr;  // the window's
    int windowsAskedFor = 0;
    int quitsAskedFor = 0;
    bool closed = false;
    std::unique_ptr<MainWindow> window;
};

}  // namespace quirebind::viewtest
