// URLEncode: search words as a search engine of the national code page (GBK) expects them in an
// address. A character that the code page lacks goes through as it stands.
#pragma once

#include <QString>

namespace guanchao {

QString urlEncode(const QString& text);

// The address of the search page: the template with each placeholder tihuandm replaced by the
// encoded words.
QString searchPage(const QString& addressTemplate, const QString& words);

// The words with each of - ( ) / " _ replaced by a blank.
QString withoutMarks(QString words);

}  // namespace guanchao
