// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/DocumentRowDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStringList>
#include <QToolTip>
#include <algorithm>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/TextLabel.h"
#include "Quirebind/Views/DocumentListModel.h"

namespace quirebind {

namespace {

constexpr int kInset = 8;        // between the list's edge and a row's background
constexpr int kHorizontal = 10;  // within the background
constexpr int kVertical = 6;
constexpr int kBetweenColumns = 10;
constexpr int kBetweenLines = 4;
constexpr double kRadius = 8;
constexpr int kMarkWidth = 3;
constexpr int kMarkInset = 3;  // from the background's edge

struct Metrics {
    QFontMetrics name{font(TextStyle::body)};
    QFontMetrics pages{font(TextStyle::caption)};
    int icon = QFontMetrics(font(TextStyle::title2)).height();

    [[nodiscard]] int textHeight() const { return name.height() + kBetweenLines + pages.height(); }
};

/// Text that runs the other way than the layout must not reorder what is around it.
QString isolated(const QString& text) {
    return QChar(0x2068) + text + QChar(0x2069);
}

/// A path as text for a tool tip, letter for letter: left to itself, the toolkit takes a name with
/// brackets for markup. The folders stand from left to right, whichever way their names run.
QString toolTip(const QString& path) {
    QStringList names = path.split(QLatin1Char('/'));
    for (QString& name : names)
        if (!name.isEmpty()) name = isolated(breakable(name));
    return QStringLiteral("<p dir='ltr' style='white-space:pre-wrap'>") +
           names.join(QLatin1Char('/')).toHtmlEscaped() + QStringLiteral("</p>");
}

/// What a row is drawn as.
struct RowState {
    bool enabled;
    bool active;  // in a window that is
    bool selected;
    bool focused;
    bool hovered;
};

RowState stateOf(const QStyleOptionViewItem& option) {
    const auto is = [&option](QStyle::StateFlag flag) { return (option.state & flag) != 0; };
    const bool enabled = is(QStyle::State_Enabled);
    // Not State_Active, which is that of the list: a selection stays visible when it loses the
    // focus.
    const bool inActiveWindow = option.widget == nullptr || option.widget->isActiveWindow();
    return {.enabled = enabled,
            .active = inActiveWindow && enabled,
            .selected = is(QStyle::State_Selected),
            .focused = is(QStyle::State_HasFocus),
            .hovered = is(QStyle::State_MouseOver) && enabled};
}

/// The group of a palette that a row is drawn in: it is no fainter in an inactive window.
QPalette::ColorGroup groupOf(const QStyleOptionViewItem& option) {
    return (option.state & QStyle::State_Enabled) != 0 ? QPalette::Active : QPalette::Disabled;
}

void drawBackground(QPainter& painter, const QRect& background, const QStyleOptionViewItem& option,
                    const RowState& state) {
    if (!state.selected && !state.hovered) return;
    const QPalette& palette = option.palette;
    painter.setBrush(
        state.selected ? selectionFill(palette, state.active)
                       : mix(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.045));
    painter.drawRoundedRect(background, kRadius, kRadius);
}

/// Tells the selected row: the background alone would be a difference of colour, and too faint for
/// many eyes.
void drawMark(QPainter& painter, const QRect& background, const QStyleOptionViewItem& option,
              const RowState& state) {
    const QRect mark(background.left() + kMarkInset, background.top() + background.height() / 4,
                     kMarkWidth, background.height() / 2);
    const QPalette& palette = option.palette;
    painter.setBrush(state.active ? accent(palette)
                                  : palette.color(groupOf(option), kSecondaryText));
    painter.drawRoundedRect(QStyle::visualRect(option.direction, background, mark),
                            kMarkWidth / 2.0, kMarkWidth / 2.0);
}

void drawFocus(QPainter& painter, const QRect& background, const QStyleOptionViewItem& option) {
    painter.setPen(QPen(accent(option.palette), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(background).adjusted(0.75, 0.75, -0.75, -0.75), kRadius,
                            kRadius);
}

/// Where the parts of a row are.
struct Places {
    QRect icon;
    QRect name;
    QRect pages;
};

/// The icon where reading begins, in the middle, and the two lines of text beside it.
Places placesIn(const QRect& content, const Metrics& metrics, Qt::LayoutDirection direction) {
    const QRect icon(content.left(), content.center().y() - metrics.icon / 2, metrics.icon,
                     metrics.icon);
    const int textWidth = content.width() - metrics.icon - kBetweenColumns;
    const QRect name(content.left() + metrics.icon + kBetweenColumns,
                     content.center().y() - metrics.textHeight() / 2 + 1, textWidth,
                     metrics.name.height());
    const QRect pages(name.left(), name.bottom() + 1 + kBetweenLines, textWidth,
                      metrics.pages.height());
    const auto mirrored = [&](const QRect& rect) {
        return QStyle::visualRect(direction, content, rect);
    };
    return {mirrored(icon), mirrored(name), mirrored(pages)};
}

void drawTexts(QPainter& painter, const Places& places, const Metrics& metrics,
               const QStyleOptionViewItem& option, const QModelIndex& index) {
    const Qt::Alignment side = QStyle::visualAlignment(option.direction, Qt::AlignLeft);
    // Letters that the font lacks come from others, which may be taller.
    const int alignment =
        static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip;
    const auto text = [&index](int role) { return index.data(role).toString(); };
    painter.setFont(font(TextStyle::body));
    painter.setPen(option.palette.color(groupOf(option), QPalette::Text));
    painter.drawText(places.name, alignment,
                     isolated(metrics.name.elidedText(text(DocumentListModel::nameRole),
                                                      Qt::ElideMiddle, places.name.width())));
    painter.setFont(font(TextStyle::caption));
    painter.setPen(option.palette.color(groupOf(option), kSecondaryText));
    painter.drawText(places.pages, alignment,
                     metrics.pages.elidedText(text(DocumentListModel::pagesRole), Qt::ElideRight,
                                              places.pages.width()));
}

}  // namespace

DocumentRowDelegate::DocumentRowDelegate()
    : icon_(symbol(QStringLiteral("doc.text"), Tint::accent)) {}

QSize DocumentRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    const Metrics metrics;
    return {0, std::max(metrics.textHeight(), metrics.icon) + 2 * kVertical + 4};
}

bool DocumentRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), toolTip(index.data(Qt::ToolTipRole).toString()), view,
                       option.rect);
    return true;
}

void DocumentRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const QRect background = option.rect.adjusted(kInset, 1, -kInset, -1);
    const QRect content = background.adjusted(kHorizontal, 0, -kHorizontal, 0);
    const RowState state = stateOf(option);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    drawBackground(*painter, background, option, state);
    if (state.selected) drawMark(*painter, background, option, state);
    if (state.focused) drawFocus(*painter, background, option);
    const Metrics metrics;
    const Places places = placesIn(content, metrics, option.direction);
    icon_.paint(painter, places.icon, Qt::AlignCenter,
                state.enabled ? QIcon::Normal : QIcon::Disabled);
    drawTexts(*painter, places, metrics, option, index);
    painter->restore();
}

}  // namespace quirebind
