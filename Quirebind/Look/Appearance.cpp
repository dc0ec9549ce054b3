// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QStyle>
#include <QStyleHints>
#include <memory>
#include <utility>

#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/ControlStyle.h"

namespace quirebind {

namespace {

constexpr int kPatience = 100;  // milliseconds that the first frame may wait for the portal
constexpr uint kPrefersDark = 1;
constexpr uint kReduced = 1;

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

const QString& scheme() {
    static const QString name = QStringLiteral("color-scheme");
    return name;
}

const QString& reducedMotion() {
    static const QString name = QStringLiteral("reduced-motion");
    return name;
}

/// Where desktops said it before there was a name for all of them.
const QString& interfaceGroup() {
    static const QString name = QStringLiteral("org.gnome.desktop.interface");
    return name;
}

const QString& animations() {
    static const QString name = QStringLiteral("enable-animations");
    return name;
}

QDBusMessage questionFor(const QString& group, const QString& key) {
    QDBusMessage question =
        QDBusMessage::createMethodCall(service(), path(), settings(), QStringLiteral("Read"));
    question << group << key;
    return question;
}

/// Read answers with a variant in a variant.
QVariant contentOf(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

Appearance::Appearance() {
    platform_ = QApplication::palette();
    themed_ = platform_ != QApplication::style()->standardPalette();
    style_ = handOver(std::make_unique<ControlStyle>());
    QApplication::setStyle(style_);  // the application owns it
    listen();
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    const QStyleHints* hints = QGuiApplication::styleHints();
    prefersDark_ = hints->colorScheme() == Qt::ColorScheme::Dark;
    connect(hints, &QStyleHints::colorSchemeChanged, this, [this](Qt::ColorScheme scheme) {
        prefersDark_ = scheme == Qt::ColorScheme::Dark;
        apply();
    });
#else
    askForScheme();
#endif
    askForMotion();
    apply();
}

void Appearance::listen() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    // Until the library has set its types up it does not know the one that the slot takes, and
    // connects nothing.
    (void)QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusVariant>());
    bus.connect(service(), path(), settings(), QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
}

void Appearance::askForScheme() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const QDBusMessage answer = bus.call(questionFor(group(), scheme()), QDBus::Block, kPatience);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        prefersDark_ = contentOf(answer.arguments().constFirst()).toUInt() == kPrefersDark;
}

/// Nothing moves before the answer can be there.
void Appearance::askForMotion() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    for (const auto& [of, key] :
         {std::pair(group(), reducedMotion()), std::pair(interfaceGroup(), animations())}) {
        auto watcher =
            std::make_unique<QDBusPendingCallWatcher>(bus.asyncCall(questionFor(of, key)), this);
        connect(
            watcher.get(), &QDBusPendingCallWatcher::finished, this,
            [this, inGroup = of, asked = key](QDBusPendingCallWatcher* answered) {
                const QDBusMessage answer = answered->reply();
                answered->deleteLater();
                if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
                    settingChanged(inGroup, asked, QDBusVariant(answer.arguments().constFirst()));
            });
        handOver(std::move(watcher));  // it deletes itself
    }
}

void Appearance::settingChanged(const QString& changedGroup, const QString& changedKey,
                                const QDBusVariant& value) {
    const QVariant content = contentOf(value.variant());
    if (changedGroup == group() && changedKey == reducedMotion())
        reducesMotion_ = content.toUInt() == kReduced;
    else if (changedGroup == interfaceGroup() && changedKey == animations())
        animates_ = content.toBool();
#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
    else if (changedGroup == group() && changedKey == scheme()) {
        prefersDark_ = content.toUInt() == kPrefersDark;
        apply();
    }
#endif
    style_->setAnimated(animates_ && !reducesMotion_);
}

void Appearance::apply() {
    const bool keepPlatform = themed_ && (isDark(platform_) || !prefersDark_);
    const QPalette ours = prefersDark_ ? darkPalette() : lightPalette();
    QApplication::setPalette(accented(keepPlatform ? platform_ : ours));
}

}  // namespace quirebind
