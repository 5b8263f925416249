// The pages of the practice market: those of a stock (its news page with the key data, its F10
// page, the two pages behind the charts, its page on the public quote site) and the vendor's list
// of proxy servers.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace guanchao {

class PracticeQuotes;

// Empty for a path that names no page of a stock.
QString practicePage(const PracticeQuotes& quotes, const QString& path, const QDateTime& now);

// The key data of the codes in the lines of the quote service: sh600000_i.
QString practiceKeyData(const PracticeQuotes& quotes, const QStringList& lowerCaseCodes,
                        const QDateTime& now);

// Its servers are not there: the addresses are kept free for examples.
QString practiceProxyPage();

}  // namespace guanchao
