// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QTimer>
#include <optional>
#include <vector>

#include "Platform/Files/URL.h"
#include "Quirebind/Preview/LinkFocus.h"
#include "Quirebind/Preview/PagePictures.h"
#include "Quirebind/Preview/PageScroller.h"
#include "Quirebind/Preview/PageSign.h"
#include "Quirebind/Preview/PreviewDocument.h"
#include "Quirebind/Preview/PreviewLinks.h"
#include "Quirebind/Preview/RenderClient.h"
#include "Quirebind/Preview/TextSelection.h"
#include "Quirebind/Preview/ZoomActions.h"

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
    /// Reads documents from `files`, which must outlive this, and `service`, too: that may still
    /// have a document of this one's in hand.
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

    /// Where the shown document comes from; nothing where none is shown.
    [[nodiscard]] std::optional<URL> documentURL() const;
    /// How many pages are shown; 0 where there is no document.
    [[nodiscard]] std::size_t pageCount() const { return column().count(); }
    /// The page in the middle of the view, counting from 0; 0 where there is no document.
    [[nodiscard]] std::size_t currentPage() const;
    /// The text of that page; empty until it has been read.
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

    void open(const URL& url);
    [[nodiscard]] const PageColumn& column() const { return scroller_.column(); }
    [[nodiscard]] QPointF middle() const;
    void zoomTo(double zoom, const QPointF& about);
    void zoomBy(double factor, const QPointF& about);
    void readMoreSizes();
    [[nodiscard]] QSize pixels(std::size_t page) const;
    [[nodiscard]] std::optional<std::size_t> pageToDraw() const;
    /// Whether that was tried in vain, and there is no older picture either.
    [[nodiscard]] bool cannotBeDrawn(std::size_t page) const;
    /// Does what a key asks for, unless that is to scroll; false where it asks for nothing of that.
    [[nodiscard]] bool actOn(const QKeyEvent& event);
    /// What of the column a key brings to the upper edge of the view; nothing where it does not
    /// scroll.
    [[nodiscard]] std::optional<double> scrollTargetOf(const QKeyEvent& event) const;
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
    void recolour();
    void selectAll();
    void copy();
    void finishCopying();
    void tellPosition();

    RenderService& service_;
    FileSystem& files_;
    PageSign sign_;
    std::optional<PreviewDocument> shown_;
    PageScroller scroller_;
    ZoomActions zoomActions_;
    PagePictures pictures_;
    TextSelection selection_;
    PreviewLinks links_;
    LinkFocus linkFocus_;
    std::vector<PageColumn::Anchor> wayBack_;  // from where links were followed
    QPointF pressed_;                          // where the button went down
    bool selecting_ = false;
    QElapsedTimer sinceDoubleClick_;
    bool copying_ = false;
    QTimer moreSizes_;
    QTimer resting_;  // runs while the view is being resized
};

}  // namespace quirebind
