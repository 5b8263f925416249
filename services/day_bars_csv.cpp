#include "services/day_bars_csv.h"

#include "base/values.h"
#include "formats/gbk.h"
#include "services/bar_check.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype fewestLines = 4;
constexpr qsizetype fewestFields = 5;
constexpr qsizetype volumeField = 5;

QString symbolOf(const QString& dm) {
    return dm.right(codeDigits) + (isOfShanghai(dm) ? u".ss"_s : u".sz"_s);
}

// A page that is no CSV has lines with commas too: a day needs a date and a close that are ones.
std::optional<DayBar> readBar(const QString& line) {
    const QStringList fields = line.trimmed().split(u',');
    if (fields.size() < fewestFields) {
        return std::nullopt;
    }
    DayBar bar;
    bar.day = QDate::fromString(fields[0].trimmed(), u"yyyy-M-d"_s);
    bar.closeText = fields[4].trimmed();
    if (!bar.day.isValid() || !readsAsNumber(bar.closeText)) {
        return std::nullopt;
    }
    bar.open = numericPrefix(fields[1]);
    bar.high = numericPrefix(fields[2]);
    bar.low = numericPrefix(fields[3]);
    bar.close = numericPrefix(bar.closeText);
    bar.volume = numericPrefix(fields.value(volumeField));
    return isPrice(bar.close) ? std::optional(bar) : std::nullopt;
}

bool isHeader(const QString& line) {
    return line.split(u',').size() >= fewestFields && !line.contains(u'<');
}

}  // namespace

QStringList CsvDayBars::paths(const BarRange& range) const {
    return {
        u"/table.csv?s=%1&a=%2&b=%3&c=%4&d=%5&e=%6&f=%7&g=d&ignore=.csv"_s.arg(symbolOf(range.dm))
            .arg(range.first.month() - 1)
            .arg(range.first.day())
            .arg(range.first.year())
            .arg(range.last.month() - 1)
            .arg(range.last.day())
            .arg(range.last.year())};
}

ReadBars CsvDayBars::read(const QByteArray& body, const QString&) const {
    const QStringList lines = textFromGbk(body).split(u'\n');
    ReadBars read;
    for (qsizetype line = lines.size() - 1; lines.size() >= fewestLines && line > 0; --line) {
        if (const std::optional<DayBar> bar = readBar(lines[line])) {
            read.bars << *bar;
        }
    }
    if (read.bars.isEmpty() && !isHeader(lines[0])) {
        read.fault = noBars;
    }
    return read;
}

}  // namespace guanchao
