// The charts of the practice market as GIF pictures: the day's prices by the minute, and candles of
// the last days, at the paths of the public chart service.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace guanchao {

class PracticeQuotes;

// Empty for a path that names no chart.
QByteArray practiceChart(const PracticeQuotes& quotes, const QString& path, const QDateTime& now);

}  // namespace guanchao
