#include "platform/desktop/desktop_colour_scheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString scheme = u"color-scheme"_s;

}  // namespace

DesktopColourScheme::DesktopColourScheme() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(service, path, settings, u"SettingChanged"_s, this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, settings, u"Read"_s);
    call.setArguments({appearance, scheme});
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) {
            take(reply.value().variant());
        }
        answer->deleteLater();
    });
}

void DesktopColourScheme::settingChanged(const QString& group, const QString& key,
                                         const QDBusVariant& value) {
    if (group == appearance && key == scheme) {
        take(value.variant());
    }
}

// The answer to Read is wrapped once more.
void DesktopColourScheme::take(const QVariant& value) {
    constexpr unsigned dark = 1;
    constexpr unsigned light = 2;
    const QVariant inner = value.userType() == qMetaTypeId<QDBusVariant>()
                               ? value.value<QDBusVariant>().variant()
                               : value;
    const unsigned told = inner.toUInt();
    isDark_ = told == dark || told == light ? std::optional(told == dark) : std::nullopt;
    if (changed_) {
        changed_();
    }
}

}  // namespace guanchao
