// The pages of a stock on the practice market: its news page with the key data, its F10 page, the
// two pages behind the charts and its page on the public quote site.
#pragma once

#include <QDateTime>
#include <QString>

namespace guanchao {

class PracticeQuotes;

// Empty for a path that names no page of a stock.
QString practicePage(const PracticeQuotes& quotes, const QString& path, const QDateTime& now);

}  // namespace guanchao
