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
    const Metrics metrics;
    const bool enabled = (option.state & QStyle::State_Enabled) != 0;
    // Not State_Active, which is that of the list: a selection stays visible when it loses the
    // focus.
    const bool active = (option.widget == nullptr || option.widget->isActiveWindow()) && enabled;
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const bool focused = (option.state & QStyle::State_HasFocus) != 0;
    const bool hovered = (option.state & QStyle::State_MouseOver) != 0 && enabled;
    const QPalette& palette = option.palette;
    const auto group = enabled ? QPalette::Active : QPalette::Disabled;
    const QRect background = option.rect.adjusted(kInset, 1, -kInset, -1);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    if (selected || hovered) {
        painter->setBrush(
            selected ? selectionFill(palette, active)
                     : mix(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.045));
        painter->drawRoundedRect(background, kRadius, kRadius);
    }
    if (selected) {
        // The background alone would be a difference of colour, and too faint for many eyes.
        const QRect mark(background.left() + kMarkInset, background.top() + background.height() / 4,
                         kMarkWidth, background.height() / 2);
        painter->setBrush(active ? accent(palette) : palette.color(group, kSecondaryText));
        painter->drawRoundedRect(QStyle::visualRect(option.direction, background, mark),
                                 kMarkWidth / 2.0, kMarkWidth / 2.0);
    }
    if (focused) {
        painter->setPen(QPen(accent(palette), 1.5));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(background).adjusted(0.75, 0.75, -0.75, -0.75), kRadius,
                                 kRadius);
    }

    const QRect content = background.adjusted(kHorizontal, 0, -kHorizontal, 0);
    const QRect icon(content.left(), content.center().y() - metrics.icon / 2, metrics.icon,
                     metrics.icon);
    const int textWidth = content.width() - metrics.icon - kBetweenColumns;
    const QRect name(content.left() + metrics.icon + kBetweenColumns,
                     content.center().y() - metrics.textHeight() / 2 + 1, textWidth,
                     metrics.name.height());
    const QRect pages(name.left(), name.bottom() + 1 + kBetweenLines, textWidth,
                      metrics.pages.height());
    const auto mirrored = [&](const QRect& rect) {
        return QStyle::visualRect(option.direction, content, rect);
    };
    const Qt::Alignment side = QStyle::visualAlignment(option.direction, Qt::AlignLeft);
    // Letters that the font lacks come from others, which may be taller.
    const int alignment =
        static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip;

    icon_.paint(painter, mirrored(icon), Qt::AlignCenter,
                enabled ? QIcon::Normal : QIcon::Disabled);
    painter->setFont(font(TextStyle::body));
    painter->setPen(palette.color(group, QPalette::Text));
    painter->drawText(
        mirrored(name), alignment,
        isolated(metrics.name.elidedText(index.data(DocumentListModel::nameRole).toString(),
                                         Qt::ElideMiddle, textWidth)));
    painter->setFont(font(TextStyle::caption));
    painter->setPen(palette.color(group, kSecondaryText));
    painter->drawText(mirrored(pages), alignment,
                      metrics.pages.elidedText(index.data(DocumentListModel::pagesRole).toString(),
                                               Qt::ElideRight, textWidth));
    painter->restore();
}

}  // namespace quirebind
