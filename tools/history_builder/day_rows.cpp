#include "tools/history_builder/day_rows.h"

#include <QFile>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>

#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype dayFields = 10;
constexpr qsizetype themeFields = 2;
constexpr double mostYuan = 1e6;

[[noreturn]] void fail(const QString& text) {
    throw std::runtime_error(text.toStdString());
}

// The code becomes the name of a table.
QString codeFrom(const QString& text) {
    const bool known = text.startsWith(u"SH"_s) || text.startsWith(u"SZ"_s);
    const QString digits = text.mid(2);
    const bool sixDigits = digits.size() == 6 && std::ranges::all_of(digits, [](QChar letter) {
                               return letter >= u'0' && letter <= u'9';
                           });
    if (!known || !sixDigits) {
        fail(u"“"_s + text + u"”不是代码，例如 SH600000"_s);
    }
    return text;
}

QDate dayFrom(const QString& text) {
    const QDate day = QDate::fromString(text, Qt::ISODate);
    if (!day.isValid()) {
        fail(u"“"_s + text + u"”不是日期，例如 2026-11-24"_s);
    }
    return day;
}

double numberFrom(const QString& name, const QString& text) {
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number) || number < 0) {
        fail(name + u"“"_s + text + u"”不是数字"_s);
    }
    return number;
}

double aboveZero(const QString& name, const QString& text) {
    const double number = numberFrom(name, text);
    if (number <= 0) {
        fail(name + u"要大于 0"_s);
    }
    return number;
}

// In hundredths, of which at least one must be left.
qint64 price(const QString& name, const QString& text) {
    const double yuan = aboveZero(name, text);
    if (yuan < 0.005 || yuan > mostYuan) {
        fail(name + u"“"_s + text + u"”要在 0.01 到 1000000 之间"_s);
    }
    return std::llround(yuan * 100);
}

DayRow dayRow(const QStringList& fields) {
    DayRow row;
    row.dm = codeFrom(fields[0]);
    row.day = dayFrom(fields[1]);
    row.open = price(u"开盘"_s, fields[2]);
    row.high = price(u"最高"_s, fields[3]);
    row.low = price(u"最低"_s, fields[4]);
    row.close = price(u"收盘"_s, fields[5]);
    row.formerClose = price(u"前收盘"_s, fields[6]);
    row.volume = numberFrom(u"成交量"_s, fields[7]);
    row.turnover = numberFrom(u"成交额"_s, fields[8]);
    row.factor = aboveZero(u"复权因子"_s, fields[9]);
    return row;
}

// Takes the fields of a line; a failure gets the line's number.
struct LineReader {
    QString path;
    qsizetype fewestFields;
    std::function<void(const QStringList&)> take;

    void read(const QString& line, int number) const {
        const QString text = line.trimmed();
        if (text.isEmpty()) {
            return;
        }
        const QStringList fields = text.split(u',');
        try {
            if (fields.size() < fewestFields) {
                fail(u"应有 "_s + QString::number(fewestFields) + u" 个字段，只有 "_s +
                     QString::number(fields.size()) + u" 个"_s);
            }
            take(fields);
        } catch (const std::runtime_error& failure) {
            fail(path + u" 第 "_s + QString::number(number) + u" 行："_s +
                 QString::fromUtf8(failure.what()));
        }
    }
};

}  // namespace

// Line by line: the file of all days has hundreds of megabytes.
QList<DayRow> readDayRows(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fail(u"不能读取 "_s + path + u"："_s + file.errorString());
    }
    QList<DayRow> rows;
    const LineReader reader{path, dayFields,
                            [&](const QStringList& fields) { rows << dayRow(fields); }};
    file.readLine();
    for (int number = 2; !file.atEnd(); ++number) {
        reader.read(QString::fromUtf8(file.readLine()), number);
    }
    return rows;
}

QList<ThemeMember> readThemeMembers(const QString& path) {
    QList<ThemeMember> members;
    const LineReader reader{path, themeFields, [&](const QStringList& fields) {
                                members << ThemeMember{fields[0], codeFrom(fields[1])};
                            }};
    const QStringList lines = readTextFile(path).lines;
    for (int number = 2; number <= lines.size(); ++number) {
        reader.read(lines[number - 1], number);
    }
    return members;
}

}  // namespace guanchao
