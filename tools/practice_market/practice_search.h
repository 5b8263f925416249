// The search engine of the practice market: a page of results as a public engine words it, in UTF-8
// and declared so. The words come encoded in GBK. Numbers and headlines follow from the words and
// the day alone: the same all day, others on the next.
#pragma once

#include <QDate>
#include <QString>

namespace guanchao {

// `days`: how far back the search reaches, 0 without a limit.
QString practiceSearchPage(const QString& words, int days, const QDate& today);

}  // namespace guanchao
