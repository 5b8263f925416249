#include "base/values.h"

#include <QTimeZone>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int significantDigits = 15;

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

qsizetype skipDigits(QStringView text, qsizetype from) {
    while (from < text.size() && isDigit(text[from])) {
        ++from;
    }
    return from;
}

bool isSign(QStringView text, qsizetype at) {
    return at < text.size() && (text[at] == u'+' || text[at] == u'-');
}

// The end of the exponent that begins at `from`, or `from` itself if none stands there.
qsizetype skipExponent(QStringView text, qsizetype from) {
    if (from >= text.size() || (text[from] != u'e' && text[from] != u'E')) {
        return from;
    }
    const qsizetype digits = from + 1 + (isSign(text, from + 1) ? 1 : 0);
    const qsizetype end = skipDigits(text, digits);
    return end > digits ? end : from;
}

// The length of the number at the start of the text, 0 if none stands there.
qsizetype numberLength(QStringView text) {
    const qsizetype begin = isSign(text, 0) ? 1 : 0;
    qsizetype end = skipDigits(text, begin);
    qsizetype digits = end - begin;
    if (end < text.size() && text[end] == u'.') {
        const qsizetype fraction = skipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    return digits > 0 ? skipExponent(text, end) : 0;
}

QStringView withoutLeadingBlanks(QStringView text) {
    qsizetype begin = 0;
    while (begin < text.size() && text[begin].isSpace()) {
        ++begin;
    }
    return text.sliced(begin);
}

// A number in the 15 digits that are shown of it: 0.d1d2d3... times 10 to the power of `point`.
struct Decimal {
    bool negative = false;
    std::string digits;  // no zeros at the end; empty for zero
    int point = 0;
};

// What is no number reads as 0, what has no end as the largest number.
double finite(double value) {
    using Range = std::numeric_limits<double>;
    return std::isnan(value) ? 0 : std::clamp(value, Range::lowest(), Range::max());
}

Decimal toDecimal(double number) {
    const double value = finite(number);
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), std::abs(value),
                                   std::chars_format::scientific, significantDigits - 1);
    const std::string_view shown(text.data(), static_cast<size_t>(end.ptr - text.data()));
    const size_t mark = shown.find('e');
    Decimal decimal;
    decimal.negative = std::signbit(value);
    decimal.digits = std::string(1, shown[0]) + std::string(shown.substr(2, mark - 2));
    decimal.digits.resize(decimal.digits.find_last_not_of('0') + 1);
    decimal.point = decimal.digits.empty() ? 0 : std::stoi(std::string(shown.substr(mark + 1))) + 1;
    return decimal;
}

// Keeps `kept` digits, a half going away from zero.
void cutDigits(Decimal& decimal, int kept) {
    if (kept >= static_cast<int>(decimal.digits.size())) {
        return;
    }
    const bool up = kept >= 0 && decimal.digits[static_cast<size_t>(kept)] >= '5';
    decimal.digits.resize(static_cast<size_t>(std::max(kept, 0)));
    if (!up) {
        return;
    }
    size_t at = decimal.digits.size();
    while (at > 0 && decimal.digits[at - 1] == '9') {
        decimal.digits[--at] = '0';
    }
    if (at > 0) {
        ++decimal.digits[at - 1];
    } else {
        decimal.digits.insert(0, 1, '1');
        ++decimal.point;
    }
}

std::string wholePart(const Decimal& decimal) {
    if (decimal.point <= 0) {
        return "0";
    }
    std::string whole = decimal.digits.substr(0, static_cast<size_t>(decimal.point));
    whole.resize(static_cast<size_t>(decimal.point), '0');
    return whole;
}

std::string fractionPart(const Decimal& decimal) {
    if (decimal.point >= static_cast<int>(decimal.digits.size())) {
        return {};
    }
    const auto zeros = static_cast<size_t>(std::max(-decimal.point, 0));
    const auto from = static_cast<size_t>(std::max(decimal.point, 0));
    return std::string(zeros, '0') + decimal.digits.substr(from);
}

std::string scientificText(const Decimal& decimal) {
    std::string text = decimal.digits.substr(0, 1);
    if (decimal.digits.size() > 1) {
        text += '.' + decimal.digits.substr(1);
    }
    const int exponent = decimal.point - 1;
    const std::string power = std::to_string(std::abs(exponent));
    return text + (exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

bool needsExponent(const Decimal& decimal) {
    const int decimals = static_cast<int>(decimal.digits.size()) - decimal.point;
    return decimal.point > significantDigits || decimals > significantDigits;
}

QString signedText(const Decimal& decimal, const std::string& text) {
    const bool minus = decimal.negative && text.find_first_not_of("0.") != std::string::npos;
    return (minus ? u"-"_s : QString()) + QString::fromStdString(text);
}

// The usual case of "##0.00", for which a grid of all stocks asks forty thousand times: the
// hundredths of a number of moderate size that lies clearly on one side of the half. Nothing for
// any other.
std::optional<int> quickHundredths(double value) {
    const double hundredths = std::abs(value) * 100;
    if (!(hundredths < 1e9)) {
        return std::nullopt;
    }
    const double whole = std::floor(hundredths);
    const double fraction = hundredths - whole;
    if (std::abs(fraction - 0.5) < 1e-4) {
        return std::nullopt;
    }
    const int rounded = static_cast<int>(whole) + (fraction > 0.5 ? 1 : 0);
    return value < 0 ? -rounded : rounded;
}

QString hundredthsText(int hundredths) {
    auto rest = static_cast<unsigned>(std::abs(hundredths));
    std::array<char16_t, 12> text;
    auto at = text.end();
    for (int digit = 0; digit < 3 || rest > 0; ++digit) {
        if (digit == 2) {
            *--at = u'.';
        }
        *--at = static_cast<char16_t>(u'0' + rest % 10);
        rest /= 10;
    }
    if (hundredths < 0) {
        *--at = u'-';
    }
    return QStringView(at, text.end()).toString();
}

template <typename Integer>
std::optional<Integer> wholeNumber(QStringView text) {
    using Range = std::numeric_limits<Integer>;
    const double whole = roundToWhole(numericPrefix(text));
    if (whole < Range::min() || whole > Range::max()) {
        return std::nullopt;
    }
    return static_cast<Integer>(whole);
}

}  // namespace

double numericPrefix(QStringView text) {
    QStringView number = withoutLeadingBlanks(text);
    number = number.first(numberLength(number));
    if (!number.isEmpty() && number[0] == u'+') {
        number = number.sliced(1);
    }
    std::array<char, 64> fixed;
    std::string longer;
    char* begin = fixed.data();
    if (number.size() > static_cast<qsizetype>(fixed.size())) {
        longer.resize(static_cast<size_t>(number.size()));
        begin = longer.data();
    }
    std::transform(number.begin(), number.end(), begin, [](QChar c) { return c.toLatin1(); });
    double value = 0;
    const auto read = std::from_chars(begin, begin + number.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        // Qt tells what is too large, by an infinity, from what is too small.
        constexpr double largest = std::numeric_limits<double>::max();
        return std::clamp(number.toDouble(), -largest, largest);
    }
    return read.ec == std::errc() ? value : 0;
}

bool readsAsNumber(QStringView text) {
    const QStringView number = text.trimmed();
    return !number.isEmpty() && numberLength(number) == number.size();
}

double roundToWhole(double value) {
    return std::nearbyint(value);
}

std::optional<qint16> wholeNumber16(QStringView text) {
    return wholeNumber<qint16>(text);
}

std::optional<qint32> wholeNumber32(QStringView text) {
    return wholeNumber<qint32>(text);
}

double roundTo(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = value * scale;
    return std::isfinite(scaled) ? std::nearbyint(scaled) / scale : value;
}

QString numberText(double value) {
    const Decimal decimal = toDecimal(value);
    if (needsExponent(decimal)) {
        return signedText(decimal, scientificText(decimal));
    }
    const std::string fraction = fractionPart(decimal);
    return signedText(decimal, wholePart(decimal) + (fraction.empty() ? "" : "." + fraction));
}

QString twoDecimals(double value) {
    if (const std::optional<int> quick = quickHundredths(value)) {
        return hundredthsText(*quick);
    }
    Decimal decimal = toDecimal(value);
    cutDigits(decimal, decimal.point + 2);
    std::string fraction = fractionPart(decimal);
    fraction.resize(2, '0');
    return signedText(decimal, wholePart(decimal) + "." + fraction);
}

double toTwoDecimals(double value) {
    const std::optional<int> quick = quickHundredths(value);
    return quick ? *quick / 100.0 : numericPrefix(twoDecimals(value));
}

QString noDecimals(double value) {
    Decimal decimal = toDecimal(value);
    cutDigits(decimal, decimal.point);
    return signedText(decimal, wholePart(decimal));
}

QString timeText(const QDateTime& moment) {
    return moment.toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

QString timeText(QDate day) {
    return timeText(day.startOfDay(QTimeZone::utc()));
}

QString dateText(QDate day) {
    return day.toString(u"yyyy-MM-dd"_s);
}

QString trimBlanks(const QString& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ') {
        ++begin;
    }
    while (end > begin && text[end - 1] == u' ') {
        --end;
    }
    return text.sliced(begin, end - begin);
}

QString quoted(QString text) {
    return u'\'' + text.remove(QChar::Null).replace(u'\'', u"''"_s) + u'\'';
}

QString quotedList(const QStringList& texts) {
    QStringList words;
    words.reserve(texts.size());
    for (const QString& text : texts) {
        words << quoted(text);
    }
    return words.join(u',');
}

QString quotedName(QString name) {
    return u'"' + name.remove(QChar::Null).replace(u'"', u"\"\""_s) + u'"';
}

QString shortened(const QString& text, qsizetype most) {
    if (text.size() <= most) {
        return text;
    }
    const bool half = text[most - 2].isHighSurrogate();
    return text.first(most - (half ? 2 : 1)) + u'…';
}

QString kongzhuanhuan(const QString& value) {
    return trimBlanks(value).isEmpty() ? QString() : value;
}

}  // namespace guanchao
