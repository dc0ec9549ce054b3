// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QStyle>
#include <QStyleHints>
#include <memory>

#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Views/Colours.h"
#include "Quirebind/Views/ControlStyle.h"

namespace quirebind {

namespace {

constexpr int kPatience = 100;  // milliseconds that the first frame may wait for the portal
constexpr uint kPrefersDark = 1;

const QString& service() {
    static const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
    return name;
}

const QString& path() {
    static const QString name = QStringLiteral("/org/freedesktop/portal/desktop");
    return name;
}

const QString& settings() {
    static const QString name = QStringLiteral("org.freedesktop.portal.Settings");
    return name;
}

const QString& group() {
    static const QString name = QStringLiteral("org.freedesktop.appearance");
    return name;
}

const QString& key() {
    static const QString name = QStringLiteral("color-scheme");
    return name;
}

/// Read answers with a variant in a variant.
uint schemeIn(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

}  // namespace

Appearance::Appearance() {
    platform_ = QApplication::palette();
    themed_ = platform_ != QApplication::style()->standardPalette();
    QApplication::setStyle(handOver(std::make_unique<ControlStyle>()));  // the application owns it
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    const QStyleHints* hints = QGuiApplication::styleHints();
    prefersDark_ = hints->colorScheme() == Qt::ColorScheme::Dark;
    connect(hints, &QStyleHints::colorSchemeChanged, this, [this](Qt::ColorScheme scheme) {
        prefersDark_ = scheme == Qt::ColorScheme::Dark;
        apply();
    });
#else
    askDesktop();
#endif
    apply();
}

void Appearance::askDesktop() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    // Until the library has set its types up it does not know the one that the slot takes, and
    // connects nothing.
    (void)QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusVariant>());
    bus.connect(service(), path(), settings(), QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(service(), path(), settings(), QStringLiteral("Read"));
    question << group() << key();
    const QDBusMessage answer = bus.call(question, QDBus::Block, kPatience);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        prefersDark_ = schemeIn(answer.arguments().constFirst()) == kPrefersDark;
}

void Appearance::settingChanged(const QString& changedGroup, const QString& changedKey,
                                const QDBusVariant& value) {
    if (changedGroup != group() || changedKey != key()) return;
    prefersDark_ = schemeIn(value.variant()) == kPrefersDark;
    apply();
}

void Appearance::apply() {
    const bool keepPlatform = themed_ && (isDark(platform_) || !prefersDark_);
    const QPalette ours = prefersDark_ ? darkPalette() : lightPalette();
    QApplication::setPalette(accented(keepPlatform ? platform_ : ours));
}

}  // namespace quirebind
