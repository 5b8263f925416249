#include "base/date_trio.h"

#include <chrono>
#include <cstdlib>
#include <optional>

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastYear = 9999;
constexpr int monthsOfYear = 12;

QStringList numbers(int first, int last) {
    QStringList texts;
    for (int number = first; number <= last; ++number) {
        texts << QString::number(number);
    }
    return texts;
}

bool isShortMonth(double month) {
    return month == 4 || month == 6 || month == 9 || month == 11;
}

int wholeNumber(const QString& text) {
    const std::optional<qint16> number = wholeNumber16(text);
    if (!number) {
        throw OperationError(u"日期里的数字“"_s + text + u"”太大。"_s);
    }
    return *number;
}

OperationError outOfRange(const DateTexts& texts) {
    return OperationError(u"日期“"_s + texts.year + u"-"_s + texts.month + u"-"_s + texts.day +
                          u"”超出了范围。"_s);
}

}  // namespace

QStringList listedYears() {
    return numbers(2007, 2030);
}

QStringList listedMonths() {
    return numbers(1, 12);
}

QStringList daysOfMonth(const QString& month) {
    const double number = roundToWhole(numericPrefix(month));
    if (number < 1 || number > 12) {
        return {};
    }
    if (number == 2) {
        return numbers(1, 28);
    }
    return numbers(1, isShortMonth(number) ? 30 : 31);
}

QString dayAfterMonth(const QString& month, const QString& day) {
    const double number = roundToWhole(numericPrefix(month));
    const double typed = numericPrefix(day);
    if (number == 2 && typed > 28) {
        return u"28"_s;
    }
    return isShortMonth(number) && typed > 30 ? u"30"_s : day;
}

QDate packDate(const DateTexts& texts) {
    using namespace std::chrono;
    const int month = wholeNumber(texts.year) * monthsOfYear + wholeNumber(texts.month) - 1;
    if (std::abs(month) >= (lastYear + 1) * monthsOfYear) {
        throw outOfRange(texts);
    }
    const sys_days first((year(0) / January + months(month)) / 1);
    const days sinceEpoch = (first + days(wholeNumber(texts.day) - 1)).time_since_epoch();
    const QDate packed = QDate(1970, 1, 1).addDays(sinceEpoch.count());
    if (packed.year() > lastYear) {
        throw outOfRange(texts);
    }
    return packed;
}

DateTexts dateTexts(QDate date) {
    if (!date.isValid()) {
        return {};
    }
    return {QString::number(date.year()), QString::number(date.month()),
            QString::number(date.day())};
}

}  // namespace guanchao
