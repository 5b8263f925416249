#include "platform/desktop/desktop_notifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include "platform/dialogs.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Sent without waiting for the answer: a desktop that is busy holds nothing here. The body may be
// read as markup, so that no text from outside is one.
void DesktopNotifier::notify(const QString& title, const QString& text) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
        u"org.freedesktop.Notifications"_s, u"Notify"_s);
    const quint32 replaces = 0;
    const qint32 standardTime = -1;
    call.setArguments({programName, replaces, u"guanchaotai"_s, title, text.toHtmlEscaped(),
                       QStringList(), QVariantMap(), standardTime});
    QDBusConnection::sessionBus().send(call);
}

}  // namespace guanchao
