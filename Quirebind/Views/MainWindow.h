// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <functional>
#include <memory>

#include "Quirebind/Views/Divider.h"
#include "Quirebind/Views/DocumentSidebar.h"
#include "Quirebind/Views/ErrorAlert.h"
#include "Quirebind/Views/HeaderBar.h"
#include "Quirebind/Views/MergeAnnouncement.h"
#include "Quirebind/Views/MergeBar.h"
#include "Quirebind/Views/PreviewPane.h"
#include "Quirebind/Views/SplitArea.h"
#include "Quirebind/Workflow/ContentView.h"
#include "Quirebind/Workflow/RedrawScheduler.h"

namespace quirebind {

/// What the program gives to each of its windows. All of it outlives them.
struct WindowServices {
    MainThread& mainThread;
    BackgroundWork& background;
    RenderService& renderer;
    /// PDFMerger::merge, or what stands in for it in tests.
    std::function<void(std::span<const URL>, const URL&)> merge;
    /// Makes the desktop as a window sees it: its panels belong to that window.
    std::function<std::unique_ptr<Desktop>(QWidget& window)> makeDesktop;
    /// The user asked for another window, or to quit.
    std::function<void()> openWindow;
    std::function<void()> quit;
    /// A window was closed; it may be destroyed once no function of it runs any more.
    std::function<void(QWidget& window)> closed;
};

/// A window: the state of its own, and the regions that draw it.
///
///     header bar
///     ------------------------------
///     document sidebar | preview        (split area)
///     ------------------------------
///     merge bar
///
/// Every write of the state asks for a redraw; a turn of the event loop makes one of all of them.
/// Redrawing is idempotent. While a merge runs the content is disabled; the alert is not part of
/// it. A window that is asked to close while a merge runs says so and closes once it has ended
/// well. Main thread only.
class MainWindow : public QMainWindow {
 public:
    /// An empty list, not shown yet. What `services` refers to must outlive this.
    explicit MainWindow(const WindowServices& services);

    /// What it draws; lives as long as the window.
    [[nodiscard]] ContentView& state() { return state_; }

 protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void redraw();
    /// Lets the window become as small as what it shows, and the user's font, allow; on a small
    /// screen, smaller than it looks well.
    void keepRoom();
    void addShortcuts();
    /// Moves the focus to the next region that has something to focus, or the one before.
    void focusRegion(int direction);
    void waitToClose();
    /// Opens the menu of what has the focus, as the key for menus does, which the toolkit knows.
    void openMenu();
    /// Closes the menu that a part of this window has opened, if any.
    void closeMenu() const;

    WindowServices services_;
    std::unique_ptr<Desktop> desktop_;
    RedrawScheduler redraws_;
    ContentView state_;

    QWidget content_;
    HeaderBar header_;
    Divider upperDivider_;
    DocumentSidebar sidebar_;
    PreviewPane preview_;
    SplitArea split_;
    Divider lowerDivider_;
    MergeBar mergeBar_;
    MergeAnnouncement announcement_;
    ErrorAlert alert_;
    QMessageBox closing_;  // says that the window waits for the merge

    QPointer<QWidget> focusBeforeMerge_;
    bool closesAfterMerge_ = false;
};

}  // namespace quirebind
