#include "research/named_settings.h"

#include <QUrl>

#include "base/activity.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString keyOfName(const QString& name) {
    return QString::fromLatin1(QUrl::toPercentEncoding(name));
}

QString nameOfKey(const QString& key) {
    return QUrl::fromPercentEncoding(key.toLatin1());
}

void requireWritten(QSettings& settings) {
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        throw OperationError(u"写不了 "_s + settings.fileName() +
                             u"，请检查磁盘空间和访问权限。"_s);
    }
}

}  // namespace guanchao
