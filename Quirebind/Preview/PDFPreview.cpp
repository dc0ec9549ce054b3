// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PDFPreview.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <cmath>
#include <new>

#include "Platform/Files/FileSystem.h"
#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Look/AccessibleRole.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/PagePaint.h"
#include "Quirebind/Preview/RenderService.h"
#include "Quirebind/RenderProtocol/RenderProtocol.h"

// What is shown: opening, drawing. Where on the view it is stands in PageScroller.cpp, and what the
// user does with it in PDFPreviewInput.cpp.

namespace quirebind {

namespace {

constexpr int kMillisecondsToRest = 90;

}  // namespace

PDFPreview::PDFPreview(RenderService& service) : PDFPreview(service, FileSystem::native()) {}

PDFPreview::PDFPreview(RenderService& service, FileSystem& files)
    : service_(service),
      files_(files),
      scroller_(*this),
      zoomActions_(*this, {[this](double factor) { zoomBy(factor, middle()); },
                           [this] { zoomTo(PageScroller::kFitting, middle()); }}) {
    setFrameShape(NoFrame);
    setAccessibleRole(*this, QAccessible::Document);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // the pages' width must not depend on it
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setAutoFillBackground(true);
    recolour();
    moreSizes_.setInterval(0);
    connect(&moreSizes_, &QTimer::timeout, this, [this] { readMoreSizes(); });
    resting_.setSingleShot(true);
    resting_.setInterval(kMillisecondsToRest);
    connect(&resting_, &QTimer::timeout, this, [this] { service_.wake(); });
    service_.add(*this);
}

PDFPreview::~PDFPreview() {
    service_.remove(*this);
}

// Opening.

std::optional<URL> PDFPreview::documentURL() const {
    return shown_ ? std::optional(shown_->url()) : std::nullopt;
}

void PDFPreview::setURL(const URL& url) {
    if (documentURL() == url) return;
    clear();
    try {
        open(url);
    } catch (const std::bad_alloc&) {
        clear();
    }
}

void PDFPreview::open(const URL& url) {
    shown_ = PreviewDocument::open(url, files_, service_);
    if (!shown_) return;
    setAccessibleName(displayName(url));
    const std::size_t count = shown_->pdf().pageCount();
    std::vector<PageSize> sizes = shown_->readSizes();
    // The rest will probably be like the last; it is read little by little.
    if (!shown_->hasAllSizes()) {
        sizes.resize(count, sizes.empty() ? PageSize() : sizes.back());
        moreSizes_.start();
    }
    selection_.reset(count);
    scroller_.setSizes(std::move(sizes));
    resting_.stop();
    tellPosition();
    service_.wake();
}

void PDFPreview::clear() {
    if (!shown_) return;
    shown_.reset();
    scroller_.setSizes({});
    zoomActions_.show(scroller_.zoom());
    pictures_.clear();
    selection_.reset(0);
    links_.reset();
    linkFocus_.reset();
    viewport()->setCursor(Qt::ArrowCursor);
    wayBack_.clear();
    copying_ = false;
    moreSizes_.stop();
    setAccessibleName({});
    service_.wake();
}

void PDFPreview::readMoreSizes() {
    const std::size_t first = shown_->sizesRead();
    scroller_.correctSizes(first, shown_->readSizes());
    if (shown_->hasAllSizes()) moreSizes_.stop();
}

// What shows of it.

void PDFPreview::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (scroller_.resized()) resting_.start();
    service_.wake();
}

void PDFPreview::scrollContentsBy(int, int) {
    if (viewport()->underMouse() && column().count() != 0)
        showPointer(viewport()->mapFromGlobal(QCursor::pos()));
    viewport()->update();
    tellPosition();
    service_.wake();
}

std::size_t PDFPreview::currentPage() const {
    return column().count() == 0 ? 0 : scroller_.middlePage();
}

QString PDFPreview::currentPageText() const {
    const PageText* text = selection_.pageText(currentPage());
    return text == nullptr ? QString() : text->text;
}

QSize PDFPreview::pixels(std::size_t page) const {
    QSizeF size(column().pageWidth(page), column().pageHeight(page));
    size *= devicePixelRatioF();
    const double pixels = size.width() * size.height();
    if (const double most = render::kMostPixels; pixels > most)
        size *= std::sqrt(most / pixels) * 0.999;
    return size.toSize().expandedTo({1, 1});
}

// Drawing.

void PDFPreview::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    if (column().count() > 0) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const PageScroller::Range pages = scroller_.visible();
        for (std::size_t page = pages.first; page <= pages.last; ++page) drawPage(painter, page);
    }
    if (!hasFocus()) return;
    if (window()->testAttribute(Qt::WA_KeyboardFocusChange))
        drawFocusFrame(painter, QRectF(viewport()->rect()), palette());
    if (linkFocus_.current()) drawLinkFrame(painter, linkRect(*linkFocus_.current()));
}

/// Beside the pages, and behind the scroll bar, it is what pages lie on.
void PDFPreview::recolour() {
    const QColor background = pageBackground(QApplication::palette());
    if (palette().color(QPalette::Window) == background) return;
    QPalette colours;  // all others are inherited
    colours.setColor(QPalette::Window, background);
    setPalette(colours);
}

void PDFPreview::drawPage(QPainter& painter, std::size_t page) const {
    const QRectF rect = scroller_.pageRect(page);
    drawPaper(painter, rect, palette());
    const QImage picture = pictures_.find(page);
    if (!picture.isNull()) painter.drawImage(rect, picture, QRectF(picture.rect()));
    if (cannotBeDrawn(page)) sign_.draw(painter, rect, QRectF(viewport()->rect()));
    for (const QRectF& area : selection_.areasOn(page))
        markText(painter, scroller_.rectOn(page, area));
}

// The renderer.

bool PDFPreview::cannotBeDrawn(std::size_t page) const {
    return pictures_.find(page).isNull() && pictures_.isSettled(page, pixels(page));
}

std::optional<std::size_t> PDFPreview::pageToDraw() const {
    const PageScroller::Range pages = scroller_.visible();
    const auto missing = [this](std::size_t page) {
        return !pictures_.isSettled(page, pixels(page));
    };
    const std::size_t current = currentPage();
    if (missing(current)) return current;
    for (std::size_t page = pages.first; page <= pages.last; ++page)
        if (missing(page)) return page;
    if (pages.last + 1 < column().count() && missing(pages.last + 1)) return pages.last + 1;
    if (pages.first > 0 && missing(pages.first - 1)) return pages.first - 1;
    return std::nullopt;
}

bool PDFPreview::isSharp() const {
    if (column().count() == 0) return true;
    const PageScroller::Range pages = scroller_.visible();
    for (std::size_t page = pages.first; page <= pages.last; ++page)
        if (!pictures_.isSettled(page, pixels(page))) return false;
    return true;
}

std::optional<RenderTask> PDFPreview::nextTask() {
    if (!shown_ || !shown_->rendered() || column().count() == 0 || !isVisible() ||
        resting_.isActive())
        return std::nullopt;
    const PageScroller::Range pages = scroller_.visible();
    auto task = selection_.nextTask(pages.first, pages.last);
    if (const auto page = pageToDraw(); !task && page)
        task = RenderTask{RenderTask::Kind::picture, nullptr, *page, pixels(*page), {}, {}};
    if (!task && copying_) task = selection_.nextTask();
    if (!task && selection_.pageText(currentPage()) == nullptr)
        task = RenderTask{RenderTask::Kind::text, nullptr, currentPage(), {}, {}, {}};
    if (task) task->document = shown_->rendered();
    return task;
}

bool PDFPreview::wants(const RenderTask& task) const {
    if (!shown_ || task.document != shown_->rendered()) return false;
    if (task.kind == RenderTask::Kind::picture) {
        const PageScroller::Range pages = scroller_.visible();
        return task.pixels == pixels(task.page) && task.page + 1 >= pages.first &&
               task.page <= pages.last + 1;
    }
    if (task.kind == RenderTask::Kind::text && task.page == currentPage()) return true;
    return selection_.wants(task);
}

void PDFPreview::didRender(const RenderTask& task, const QImage& picture) {
    const bool couldNot = cannotBeDrawn(task.page);
    pictures_.put(task.page, picture, currentPage());
    viewport()->update();
    if (couldNot && task.page == currentPage()) tellPosition();
}

void PDFPreview::didRead(const RenderTask& task, const PageText& text) {
    selection_.didRead(task, text);
    viewport()->update();
    if (copying_) finishCopying();
    if (task.page == currentPage() && task.kind == RenderTask::Kind::text) tellPosition();
}

void PDFPreview::didFail(const RenderTask& task) {
    if (task.kind == RenderTask::Kind::picture)
        pictures_.putFailure(task.page, task.pixels);
    else
        selection_.didRead(task, {});  // no text can be had of it
    viewport()->update();
    if (copying_) finishCopying();
    if (task.page == currentPage()) tellPosition();
}

void PDFPreview::didRecover() {
    pictures_.forgetFailures();
    selection_.forgetFailures();
    viewport()->update();
    tellPosition();
}

}  // namespace quirebind
