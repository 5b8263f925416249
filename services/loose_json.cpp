#include "services/loose_json.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <limits>

#include "base/values.h"
#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// {day:'2026-11-20'} becomes {"day":"2026-11-20"}.
QString mended(QString text) {
    static const QRegularExpression bareKey(u"([{,]\\s*)([A-Za-z_]\\w*)\\s*:"_s);
    text.replace(u'\'', u'"');
    return text.replace(bareKey, u"\\1\"\\2\":"_s);
}

}  // namespace

QJsonDocument readLooseJson(const QByteArray& body) {
    if (body.trimmed() == "null") {
        return QJsonDocument(QJsonArray());
    }
    const QJsonDocument strict = QJsonDocument::fromJson(body);
    if (!strict.isNull()) {
        return strict;
    }
    const QString text = textFromGbk(body);
    const QJsonDocument inGbk = QJsonDocument::fromJson(text.toUtf8());
    return inGbk.isNull() ? QJsonDocument::fromJson(mended(text).toUtf8()) : inGbk;
}

QString numberWords(const QJsonValue& value) {
    if (value.isDouble()) {
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    return value.toString().trimmed();
}

double numberIn(const QString& words) {
    return readsAsNumber(words) ? numericPrefix(words) : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace guanchao
