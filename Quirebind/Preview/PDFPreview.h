// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractScrollArea>
#include <QAction>
#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"
#include "Quirebind/Preview/LinkFocus.h"
#include "Quirebind/Preview/PageColumn.h"
#include "Quirebind/Preview/PagePictures.h"
#include "Quirebind/Preview/PageSign.h"
#include "Quirebind/Preview/PreviewLinks.h"
#include "Quirebind/Preview/RenderClient.h"
#include "Quirebind/Preview/TextSelection.h"

namespace quirebind {

class FileSystem;
class RenderService;

/// Shows a document: all of its pages in one column, as wide as the view, which scrolls. Text can
/// be selected with the mouse and copied. A click on a link that leads inside the document goes
/// there, and the key for going back returns; other links do nothing. The tab key comes by the
/// links in sight before it leaves, and Return follows the one with the frame. Pages may be shown
/// larger and smaller than that, until another document is shown.
///
/// The document is opened here, on the main thread; its pages are drawn elsewhere, by the render
/// service, and are white until they are there; one that cannot be drawn shows a sign. While the
/// view is being resized, pictures are stretched, and drawn anew once it rests. Main thread only.
class PDFPreview : public QAbstractScrollArea, private RenderClient {
 public:
    /// Shows nothing yet. `service` must outlive this.
    explicit PDFPreview(RenderService& service);
    /// Reads documents from `files`, which must outlive this.
    PDFPreview(RenderService& service, FileSystem& files);
    PDFPreview(const PDFPreview&) = delete;
    PDFPreview& operator=(const PDFPreview&) = delete;
    PDFPreview(PDFPreview&&) = delete;
    PDFPreview& operator=(PDFPreview&&) = delete;
    ~PDFPreview() override;

    /// Shows the document at `url`, unless it is the one that is shown: that stays, where it was
    /// scrolled to. One that cannot be opened, or that there is no memory for, leaves the view
    /// empty and is tried again next time.
    void setURL(const URL& url);
    /// Shows nothing.
    void clear();

    /// Where the shown document comes from.
    [[nodiscard]] std::optional<URL> documentURL() const;
    [[nodiscard]] std::size_t pageCount() const { return column_.count(); }
    /// The page that fills most of the view, counting from 0.
    [[nodiscard]] std::size_t currentPage() const;
    /// The text of that page, where it has been read.
    [[nodiscard]] QString currentPageText() const;

    /// Whether every page in sight is drawn as sharply as it can be.
    [[nodiscard]] bool isSharp() const;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

 private:
    // What is wanted of the renderer, and what comes.
    [[nodiscard]] std::optional<RenderTask> nextTask() override;
    [[nodiscard]] bool wants(const RenderTask& task) const override;
    void didRender(const RenderTask& task, const QImage& picture) override;
    void didRead(const RenderTask& task, const PageText& text) override;
    void didFail(const RenderTask& task) override;
    void didRecover() override;

    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;
    };

    void open(const URL& url);
    /// What of the column, in its pixels, is at the upper left corner of the view.
    [[nodiscard]] double top() const;
    [[nodiscard]] double left() const;
    void scrollTo(double y);
    void scrollAcrossTo(double x);
    void setUpZooming();
    void showZoom();
    [[nodiscard]] QPointF middle() const;
    void zoomTo(double zoom, const QPointF& about);
    void zoomBy(double factor, const QPointF& about);
    void layOut();
    void readMoreSizes();
    [[nodiscard]] std::vector<PageSize> readSizes(std::size_t first, std::size_t last) const;
    /// The pages in sight. Needs a page.
    [[nodiscard]] Range visible() const;
    [[nodiscard]] QRectF pageRect(std::size_t page) const;
    [[nodiscard]] QSize pixels(std::size_t page) const;
    [[nodiscard]] std::optional<std::size_t> pageToDraw() const;
    /// Whether that was tried in vain, and there is no older picture either.
    [[nodiscard]] bool cannotBeDrawn(std::size_t page) const;
    [[nodiscard]] TextSelection::Position positionAt(const QPointF& point) const;
    void showPointer(const QPointF& point);
    /// The links that can be followed and show, at least in part.
    [[nodiscard]] std::vector<LinkFocus::Link> linksInSight() const;
    /// Where a link is in the viewport.
    [[nodiscard]] QRectF linkRect(const LinkFocus::Link& link) const;
    [[nodiscard]] bool focusedLinkShows() const;
    [[nodiscard]] std::optional<PagePosition> targetOf(const PageLink& link) const;
    void followFocusedLink();
    void goTo(const PagePosition& target);
    void goBack();
    void drawPage(QPainter& painter, std::size_t page) const;
    void drawFocus(QPainter& painter) const;
    void drawLinkFocus(QPainter& painter) const;
    void recolour();
    void copy();
    void finishCopying();
    void tellPosition();

    RenderService& service_;
    FileSystem& files_;
    PageSign sign_;
    std::optional<PDFDocument> document_;
    std::optional<URL> url_;  // of the document
    std::shared_ptr<const RenderDocument>
        rendered_;  // null where there is no descriptor left for it
    PageColumn column_;
    PagePictures pictures_;
    TextSelection selection_;
    PreviewLinks links_;
    LinkFocus linkFocus_;
    std::vector<PageColumn::Anchor> wayBack_;  // from where links were followed
    QPointF pressed_;                          // where the button went down
    std::size_t sizesRead_ = 0;
    double zoom_ = 1;  // how many times as wide as the view the column is
    QAction zoomIn_;
    QAction zoomOut_;
    QAction fitWidth_;
    double unit_ = 1;  // pixels of the column that one step of the scroll bar stands for
    bool selecting_ = false;
    QElapsedTimer sinceDoubleClick_;
    bool copying_ = false;
    QTimer moreSizes_;
    QTimer resting_;  // runs while the view is being resized
};

}  // namespace quirebind
