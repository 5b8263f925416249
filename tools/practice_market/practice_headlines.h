// The news of the practice market, as Eastmoney tells them: which headlines there are of a word
// follows from the word and the moment alone, and what has been told comes again, the newest first.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace guanchao {

// The answer to a call of that name with the question `param`, JSON as EastmoneyHeadlines sends it.
QByteArray practiceHeadlines(const QString& call, const QByteArray& param, const QDateTime& now);

}  // namespace guanchao
