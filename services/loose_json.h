// JSON as services send it: in UTF-8 or GBK, now and then with quotes or keys of JavaScript.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

namespace guanchao {

// A null document for what can't be read. The word `null` by itself is an empty array.
QJsonDocument readLooseJson(const QByteArray& body);

// A number or the text of one, as it came; empty for anything else.
QString numberWords(const QJsonValue& value);

// NaN where the words are no number.
double numberIn(const QString& words);

}  // namespace guanchao
