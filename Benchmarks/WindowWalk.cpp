// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Benchmarks/MeasuredApplication.h"
#include "Quirebind/Desktop/QtDesktop.h"
#include "Quirebind/Desktop/QtMainThread.h"
#include "Quirebind/Desktop/UserLanguage.h"
#include "Quirebind/Look/Appearance.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"
#include "Quirebind/Views/MainWindow.h"
#include "QuirebindCore/PDFMerger.h"

// Does with windows what a user would, and prints how long that took: a line for each time, what
// was done and the milliseconds until it showed, and one for the longest that the main thread was
// busy with one event meanwhile, NAME.stall.
//
//     window-walk FOLDER COUNT DOCUMENT
//
// The first COUNT documents of the folder are added at once; DOCUMENT has many pages, which are
// scrolled through. What is drawn shows once it has been handed to the window system.

namespace {

using quirebind::URL;
using quirebind::benchmarks::MeasuredApplication;
using quirebind::benchmarks::milliseconds;

constexpr int kMostMilliseconds = 30'000;  // for one step
constexpr std::size_t kLookedAt = 20;      // documents
constexpr int kStepsToRest = 20;           // steps on end, behind which somebody waits and looks
constexpr int kResizes = 80;
constexpr QSize kStep{8, 4};

/// Notices that a widget is painted while a condition holds.
class PaintWatch : public QObject {
 public:
    PaintWatch(QWidget& widget, std::function<bool()> condition)
        : condition_(std::move(condition)) {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && condition_()) seen_ = true;
        return false;
    }

    [[nodiscard]] bool seen() const { return seen_; }

 private:
    std::function<bool()> condition_;
    bool seen_ = false;
};

/// Handles events until the condition holds.
void waitFor(const char* what, const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    QTimer waker;  // so that waiting for events has an end
    waker.start(1000);
    while (!condition()) {
        if (timer.elapsed() > kMostMilliseconds)
            throw std::runtime_error(std::string(what) + " does not come to an end");
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Does something within an event, as a user does, and waits until the widget is painted while the
/// condition holds. Gives the milliseconds from one to the other.
double take(const char* what, const std::function<void()>& action, QWidget& widget,
            const std::function<bool()>& condition) {
    bool done = false;
    const PaintWatch watch(widget, [&] { return done && condition(); });
    QElapsedTimer timer;
    timer.start();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&] {
            done = true;
            action();
        },
        Qt::QueuedConnection);
    waitFor(what, [&] { return watch.seen(); });
    return milliseconds(timer);
}

void print(const std::string& name, double value) {
    std::cout << name << ' ' << std::fixed << std::setprecision(3) << value << '\n';
}

/// What the application's windows share.
struct Program {
    quirebind::UserLanguage language;
    quirebind::QtMainThread mainThread;
    quirebind::BackgroundWork background;
    quirebind::Appearance appearance;
    quirebind::RenderService renderer{QUIREBIND_RENDERER};
};

/// A window of the application, which shows.
class Window {
 public:
    explicit Window(Program& program)
        : window_(
              {.mainThread = program.mainThread,
               .background = program.background,
               .renderer = program.renderer,
               .merge = quirebind::PDFMerger::merge,
               .makeDesktop =
                   [](QWidget& window) { return std::make_unique<quirebind::QtDesktop>(window); },
               .openWindow = [] {},
               .quit = [] {},
               .closed = [](QWidget&) {}}),
          list_(window_.findChild<QListView*>()) {
        for (auto* area : window_.findChildren<QAbstractScrollArea*>())
            if (auto* found = dynamic_cast<quirebind::PDFPreview*>(area)) preview_ = found;
        if (list_ == nullptr || preview_ == nullptr)
            throw std::runtime_error("the window is not what it was");
        take("opening", [this] { window_.show(); }, window_, [] { return true; });
    }

    [[nodiscard]] quirebind::MainWindow& window() { return window_; }
    [[nodiscard]] quirebind::PDFPreview& preview() { return *preview_; }

    /// Adds documents, and selects none where that is asked for.
    double add(std::span<const URL> urls, bool select) {
        const auto rows = window_.state().files().size() + urls.size();
        return take(
            "adding",
            [&] {
                window_.state().importFiles(urls);
                if (!select) window_.state().setSelection(std::nullopt);
            },
            *list_->viewport(),
            [&] { return list_->model()->rowCount() == static_cast<int>(rows); });
    }

    double select(std::size_t row) {
        const quirebind::InputPDF file = window_.state().files().at(row);
        const double time = take(
            "selecting", [&] { window_.state().setSelection(file.id); }, *preview_->viewport(),
            [&] { return preview_->documentURL() == file.url && preview_->isSharp(); });
        rest();
        return time;
    }

    /// Waits until the helper has nothing left to do for the page in sight. It reads the text of a
    /// page last, and of one that it could not draw there is none.
    void rest() {
        waitFor("drawing", [this] { return !preview_->currentPageText().isEmpty(); });
    }

 private:
    quirebind::MainWindow window_;
    QListView* list_;
    quirebind::PDFPreview* preview_ = nullptr;
};

std::vector<URL> documentsIn(const char* folder, std::size_t count) {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".pdf") paths.push_back(entry.path().string());
    if (count < 2 || paths.size() < count) throw std::runtime_error("there are too few documents");
    std::ranges::sort(paths);
    paths.resize(count);
    std::vector<URL> urls;
    urls.reserve(count);
    for (const std::string& path : paths) urls.push_back(URL::file(path));
    return urls;
}

/// Does steps of one kind, and prints the longest stall of them all.
void walk(MeasuredApplication& application, const std::string& name,
          const std::function<void()>& steps) {
    application.longest = 0;
    steps();
    print(name + ".stall", application.longest);
}

void lookAtDocuments(MeasuredApplication& application, Program& program,
                     std::span<const URL> urls) {
    Window window(program);
    window.add(urls, false);
    walk(application, "first-page-cold", [&] { print("first-page-cold", window.select(0)); });
    walk(application, "first-page", [&] {
        for (std::size_t row = 1; row < urls.size(); ++row) print("first-page", window.select(row));
    });
}

void addAll(MeasuredApplication& application, Program& program, std::span<const URL> urls) {
    Window window(program);
    walk(application, "adding", [&] { print("adding", window.add(urls, true)); });
    window.rest();
}

/// Takes steps on end, and waits for a sharp picture only behind every so many of them.
void takeSteps(const std::string& name, Window& window, int count,
               const std::function<void(int)>& act, const std::function<bool()>& arrived) {
    for (int step = 1; step <= count; ++step) {
        const bool looks = step % kStepsToRest == 0;
        const double time = take(
            name.c_str(), [&] { act(step); }, *window.preview().viewport(),
            [&] { return arrived() && (!looks || window.preview().isSharp()); });
        print(looks ? name + "-sharp" : name, time);
        if (looks) window.rest();
    }
}

void scroll(MeasuredApplication& application, Window& window) {
    quirebind::PDFPreview& preview = window.preview();
    QScrollBar& bar = *preview.verticalScrollBar();
    const int steps = bar.maximum() / std::max(bar.pageStep(), 1);  // never to the very end
    int before = 0;
    walk(application, "scrolling", [&] {
        takeSteps(
            "scrolling", window, steps,
            [&](int) {
                before = bar.value();
                QKeyEvent press(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
                QApplication::sendEvent(&preview, &press);
            },
            [&] { return bar.value() != before; });
    });
}

void resize(MeasuredApplication& application, Window& window) {
    const QWidget& viewport = *window.preview().viewport();
    QSize before;
    walk(application, "resizing", [&] {
        takeSteps(
            "resizing", window, kResizes,
            [&](int step) {
                before = viewport.size();
                const int sign = step <= kResizes / 2 ? 1 : -1;
                window.window().resize(window.window().size() + sign * kStep);
            },
            [&] { return viewport.size() != before; });
    });
}

void walkThrough(MeasuredApplication& application, std::span<const URL> urls, const URL& book) {
    Program program;
    lookAtDocuments(application, program, urls.first(std::min(urls.size(), kLookedAt + 1)));
    addAll(application, program, urls);
    Window window(program);
    window.add({&book, 1}, false);
    window.select(0);
    scroll(application, window);
    resize(application, window);
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        MeasuredApplication application(argc, argv);
        if (argc != 4) {
            std::cerr << "usage: window-walk FOLDER COUNT DOCUMENT\n";
            return 2;
        }
        walkThrough(application, documentsIn(argv[1], std::stoul(argv[2])), URL::file(argv[3]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "window-walk: " << error.what() << '\n';
        return 1;
    }
}
