// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/MergeAnnouncement.h"

#include <QAccessible>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Look/AccessibleRole.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

MergeAnnouncement::MergeAnnouncement(ContentView& state) : state_(state) {
    setAccessibleRole(*this, QAccessible::Notification);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(0, 0);
    hide();
}

void MergeAnnouncement::redraw() {
    const QString next = text();
    if (next == said_) return;
    said_ = next;
    hide();
    if (!next.isEmpty()) say(next);
}

QString MergeAnnouncement::text() const {
    if (state_.merging()) return text::merging();
    if (const auto& output = state_.output())
        return text::row(displayName(*output), text::pages(state_.pageCount()));
    return {};
}

void MergeAnnouncement::say(const QString& text) {
    setAccessibleName(text);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(window(), text);
#else
    show();  // screen readers read a notification out when it appears
    QAccessibleEvent event(this, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

}  // namespace quirebind
