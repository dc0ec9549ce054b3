// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PDFPreview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include <fcntl.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/SystemCall.h"
#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Look/AccessibleRole.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/OrNothing.h"
#include "Quirebind/Preview/RenderService.h"
#include "Quirebind/RenderProtocol/RenderProtocol.h"

// What is shown: opening, laying out, drawing. What the user does stands in PDFPreviewInput.cpp.

namespace quirebind {

namespace {

constexpr int kMillisecondsForSizes = 8;  // in one turn of the event loop
constexpr std::size_t kSizesAtOnce = 64;
constexpr int kMillisecondsToRest = 90;
constexpr double kMostSteps = 1 << 30;  // of a scroll bar
constexpr double kLine = 40;            // pixels that a step of a scroll bar goes

/// Owns nothing where that cannot be.
FileDescriptor openToRead(const URL& url, FileSystem& files) {
    const std::string path(url.path());
    if (!url.isFileURL() || path.find('\0') != std::string::npos) return {};
    // O_NONBLOCK: opening a FIFO that nobody writes to would wait for ever.
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    return {files, uninterrupted([&] { return files.open(AT_FDCWD, path.c_str(), kFlags, 0); })};
}

FileDescriptor duplicate(const FileDescriptor& file) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    return {FileSystem::native(), ::fcntl(file.number(), F_DUPFD_CLOEXEC, 0)};
}

}  // namespace

PDFPreview::PDFPreview(RenderService& service) : PDFPreview(service, FileSystem::native()) {}

PDFPreview::PDFPreview(RenderService& service, FileSystem& files)
    : service_(service), files_(files) {
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
    setUpZooming();
    service_.add(*this);
}

PDFPreview::~PDFPreview() {
    service_.remove(*this);
}

// Opening.

std::optional<URL> PDFPreview::documentURL() const {
    return url_;
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

/// Opened once: the renderer draws the file that the sizes were read from, also where another has
/// taken its name meanwhile.
void PDFPreview::open(const URL& url) {
    FileDescriptor file = openToRead(url, files_);
    if (file.number() < 0) return;
    FileDescriptor drawn = duplicate(file);
    document_ = PDFDocument::open(std::move(file), files_);
    if (!document_) return;
    url_ = url;
    if (drawn.number() >= 0) rendered_ = service_.document(std::move(drawn), document_->hasForm());
    setAccessibleName(displayName(url));
    const std::size_t count = document_->pageCount();
    std::vector<PageSize> sizes = readSizes(0, count);
    sizesRead_ = sizes.size();
    // The rest will probably be like the last; it is read little by little.
    if (sizesRead_ < count) {
        sizes.resize(count, sizes.empty() ? PageSize() : sizes.back());
        moreSizes_.start();
    }
    column_.setSizes(std::move(sizes));
    selection_.reset(count);
    layOut();
    scrollTo(0);
    resting_.stop();
    tellPosition();
    service_.wake();
}

void PDFPreview::clear() {
    if (!document_) return;
    document_.reset();
    url_.reset();
    rendered_.reset();
    column_.setSizes({});
    pictures_.clear();
    selection_.reset(0);
    links_.reset();
    linkFocus_.reset();
    viewport()->setCursor(Qt::ArrowCursor);
    wayBack_.clear();
    zoom_ = 1;
    showZoom();
    copying_ = false;
    moreSizes_.stop();
    setAccessibleName({});
    layOut();
    service_.wake();
}

std::vector<PageSize> PDFPreview::readSizes(std::size_t first, std::size_t last) const {
    std::vector<PageSize> sizes;
    QElapsedTimer elapsed;
    elapsed.start();
    for (std::size_t page = first; page < last; ++page) {
        if (sizes.size() % kSizesAtOnce == 0 && elapsed.elapsed() >= kMillisecondsForSizes) break;
        const auto size = orNothing([&] { return document_->pageSize(page); });
        sizes.push_back(size.value_or(PageSize()));
    }
    return sizes;
}

void PDFPreview::readMoreSizes() {
    const std::vector<PageSize> sizes = readSizes(sizesRead_, document_->pageCount());
    const PageColumn::Anchor anchor = column_.anchorAt(top());
    column_.setSizes(sizesRead_, sizes);
    sizesRead_ += sizes.size();
    if (sizesRead_ >= document_->pageCount()) moreSizes_.stop();
    layOut();
    scrollTo(column_.positionOf(anchor));
}

// Laying out.

double PDFPreview::top() const {
    return verticalScrollBar()->value() * unit_;
}

void PDFPreview::scrollTo(double y) {
    const double most = verticalScrollBar()->maximum();
    verticalScrollBar()->setValue(static_cast<int>(std::clamp(std::round(y / unit_), 0.0, most)));
}

void PDFPreview::layOut() {
    const int height = viewport()->height();
    const int width = viewport()->width();
    column_.setWidth(width * zoom_);
    const double hidden = std::max(0.0, column_.height() - height);
    unit_ = std::max(1.0, hidden / kMostSteps);
    verticalScrollBar()->setRange(0, static_cast<int>(std::ceil(hidden / unit_)));
    verticalScrollBar()->setPageStep(static_cast<int>(height / unit_));
    verticalScrollBar()->setSingleStep(std::max(1, static_cast<int>(kLine / unit_)));
    horizontalScrollBar()->setRange(0, static_cast<int>(column_.width()) - width);
    horizontalScrollBar()->setPageStep(width);
    horizontalScrollBar()->setSingleStep(static_cast<int>(kLine));
    viewport()->update();
}

void PDFPreview::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const PageColumn::Anchor anchor = column_.anchorAt(top());
    const bool rescaled = column_.width() != viewport()->width() * zoom_;
    layOut();
    scrollTo(column_.positionOf(anchor));
    if (rescaled) resting_.start();
    service_.wake();
}

void PDFPreview::scrollContentsBy(int, int) {
    if (viewport()->underMouse() && column_.count() != 0)
        showPointer(viewport()->mapFromGlobal(QCursor::pos()));
    viewport()->update();
    tellPosition();
    service_.wake();
}

PDFPreview::Range PDFPreview::visible() const {
    return {column_.pageAt(top()), column_.pageAt(top() + viewport()->height())};
}

std::size_t PDFPreview::currentPage() const {
    if (column_.count() == 0) return 0;
    return column_.pageAt(top() + viewport()->height() / 2.0);
}

QString PDFPreview::currentPageText() const {
    const PageText* text = selection_.pageText(currentPage());
    return text == nullptr ? QString() : text->text;
}

/// Where a page is in the viewport, on whole pixels of the screen: otherwise it would be blurred.
QRectF PDFPreview::pageRect(std::size_t page) const {
    const double ratio = devicePixelRatioF();
    const auto snapped = [ratio](double x) { return std::round(x * ratio) / ratio; };
    const double left = snapped(column_.pageLeft(page) - this->left());
    const double upper = snapped(column_.pageTop(page) - top());
    return {left, upper, snapped(column_.pageWidth(page)), snapped(column_.pageHeight(page))};
}

QSize PDFPreview::pixels(std::size_t page) const {
    QSizeF size(column_.pageWidth(page), column_.pageHeight(page));
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
    if (column_.count() > 0) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const Range pages = visible();
        for (std::size_t page = pages.first; page <= pages.last; ++page) drawPage(painter, page);
    }
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) drawFocus(painter);
    if (hasFocus() && linkFocus_.current()) drawLinkFocus(painter);
}

void PDFPreview::drawFocus(QPainter& painter) const {
    constexpr double kLineWidth = 2;
    const double inset = kLineWidth / 2;
    painter.setPen(
        QPen(accent(palette()), kLineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(viewport()->rect()).adjusted(inset, inset, -inset, -inset));
}

/// On paper of whatever colour: the white line tells the teal one from dark paper.
void PDFPreview::drawLinkFocus(QPainter& painter) const {
    const QRectF frame = linkRect(*linkFocus_.current()).adjusted(-2, -2, 2, 2);
    painter.setBrush(Qt::NoBrush);
    for (const auto& [colour, width] :
         {std::pair(QColor(Qt::white), 4.0), std::pair(accent(lightPalette()), 2.0)}) {
        painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(frame);
    }
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
    constexpr int kShadow = 4;
    const QRectF rect = pageRect(page);
    painter.setPen(Qt::NoPen);
    for (int i = kShadow; i > 0; --i) {  // softer outwards
        painter.setBrush(QColor(0, 0, 0, isDark(palette()) ? 34 : 11));
        painter.drawRoundedRect(rect.adjusted(-i, 1 - i, i, i + 1), i, i);
    }
    painter.fillRect(rect, Qt::white);
    const QImage picture = pictures_.find(page);
    if (!picture.isNull()) painter.drawImage(rect, picture, QRectF(picture.rect()));
    if (cannotBeDrawn(page)) sign_.draw(painter, rect, QRectF(viewport()->rect()));

    // As a marker does: what is written stays as dark as it is.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const QColor highlight = mix(accent(lightPalette()), Qt::white, 0.34);
    for (const QRectF& area : selection_.areasOn(page)) {
        const double scale = column_.scale();
        painter.fillRect(QRectF(rect.topLeft() + area.topLeft() * scale, area.size() * scale),
                         highlight);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

// The renderer.

bool PDFPreview::cannotBeDrawn(std::size_t page) const {
    return pictures_.find(page).isNull() && pictures_.isSettled(page, pixels(page));
}

std::optional<std::size_t> PDFPreview::pageToDraw() const {
    const Range pages = visible();
    const auto missing = [this](std::size_t page) {
        return !pictures_.isSettled(page, pixels(page));
    };
    const std::size_t current = currentPage();
    if (missing(current)) return current;
    for (std::size_t page = pages.first; page <= pages.last; ++page)
        if (missing(page)) return page;
    if (pages.last + 1 < column_.count() && missing(pages.last + 1)) return pages.last + 1;
    if (pages.first > 0 && missing(pages.first - 1)) return pages.first - 1;
    return std::nullopt;
}

bool PDFPreview::isSharp() const {
    if (column_.count() == 0) return true;
    const Range pages = visible();
    for (std::size_t page = pages.first; page <= pages.last; ++page)
        if (!pictures_.isSettled(page, pixels(page))) return false;
    return true;
}

std::optional<RenderTask> PDFPreview::nextTask() {
    if (!rendered_ || column_.count() == 0 || !isVisible() || resting_.isActive())
        return std::nullopt;
    const Range pages = visible();
    auto task = selection_.nextTask(pages.first, pages.last);
    if (const auto page = pageToDraw(); !task && page)
        task = RenderTask{RenderTask::Kind::picture, nullptr, *page, pixels(*page), {}, {}};
    if (!task && copying_) task = selection_.nextTask();
    if (!task && selection_.pageText(currentPage()) == nullptr)
        task = RenderTask{RenderTask::Kind::text, nullptr, currentPage(), {}, {}, {}};
    if (task) task->document = rendered_;
    return task;
}

bool PDFPreview::wants(const RenderTask& task) const {
    if (task.document != rendered_) return false;
    if (task.kind == RenderTask::Kind::picture) {
        const Range pages = visible();
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
