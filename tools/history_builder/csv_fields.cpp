#include "tools/history_builder/csv_fields.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double mostYuan = 1e6;
constexpr double mostNumber = 1e15;

QStringView withoutQuotes(QStringView field) {
    const QStringView text = field.trimmed();
    const bool quoted = text.size() >= 2 && text.front() == u'"' && text.back() == u'"';
    return quoted ? text.sliced(1, text.size() - 2).trimmed() : text;
}

// "1,234,567.8", as it can stand in quotes.
const QRegularExpression& thousands() {
    static const QRegularExpression form(u"^-?[0-9]{1,3}(,[0-9]{3})+(\\.[0-9]+)?$"_s);
    return form;
}

QDate writtenDay(QStringView text) {
    const auto isMark = [](QChar letter) { return letter == u'-' || letter == u'/'; };
    const auto first = std::ranges::find_if(text, isMark) - text.begin();
    if (first == text.size()) {
        return text.size() == 8
                   ? QDate(text.first(4).toInt(), text.sliced(4, 2).toInt(), text.sliced(6).toInt())
                   : QDate();
    }
    const QStringView rest = text.sliced(first + 1);
    const auto second = std::ranges::find_if(rest, isMark) - rest.begin();
    return second == rest.size() ? QDate()
                                 : QDate(text.first(first).toInt(), rest.first(second).toInt(),
                                         rest.sliced(second + 1).toInt());
}

}  // namespace

void splitFields(QStringView line, QChar separator, QList<QStringView>& fields) {
    fields.clear();
    bool quoted = false;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (line[at] == u'"') {
            quoted = !quoted;
        } else if (line[at] == separator && !quoted) {
            fields << withoutQuotes(line.sliced(begin, at - begin));
            begin = at + 1;
        }
    }
    fields << withoutQuotes(line.sliced(begin));
}

bool isMissing(QStringView text) {
    static const std::array words = {u"-"_s, u"--"_s, u"nan"_s, u"none"_s, u"null"_s};
    const auto isText = [&](const QString& word) {
        return text.compare(word, Qt::CaseInsensitive) == 0;
    };
    const bool isDigit = !text.isEmpty() && text.front() >= u'0' && text.front() <= u'9';
    return text.isEmpty() || (!isDigit && std::ranges::any_of(words, isText));
}

QDate dayFrom(QStringView text) {
    const auto end =
        std::ranges::find_if(text, [](QChar letter) { return letter == u' ' || letter == u'T'; }) -
        text.begin();
    const QDate day = writtenDay(text.first(end));
    if (!day.isValid()) {
        fail(u"“"_s + text.toString() + u"”不是日期，例如 2026-11-24"_s);
    }
    return day;
}

std::optional<double> numberIn(QStringView text) {
    std::array<char, 40> letters;
    if (text.size() > static_cast<qsizetype>(letters.size())) {
        return std::nullopt;
    }
    const bool isInGroups = text.contains(u',') && thousands().match(text.toString()).hasMatch();
    const QString plain = isInGroups ? text.toString().remove(u',') : QString();
    const char* const end = std::ranges::transform(isInGroups ? QStringView(plain) : text,
                                                   letters.begin(), &QChar::toLatin1)
                                .out;
    double number = 0;
    const auto read = std::from_chars(letters.data(), end, number);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && std::isfinite(number);
    return isNumber ? std::optional(number) : std::nullopt;
}

double numberFrom(const QString& name, QStringView text) {
    const std::optional<double> number = numberIn(text);
    if (!number || *number < 0 || *number > mostNumber) {
        fail(name + u"“"_s + text.toString() + u"”不是数字"_s);
    }
    return *number;
}

double aboveZero(const QString& name, QStringView text) {
    const double number = numberFrom(name, text);
    if (number <= 0) {
        fail(name + u"要大于 0"_s);
    }
    return number;
}

qint64 priceFrom(const QString& name, QStringView text) {
    const double yuan = aboveZero(name, text);
    if (yuan < 0.005 || yuan > mostYuan) {
        fail(name + u"“"_s + text.toString() + u"”要在 0.01 到 1000000 之间"_s);
    }
    return std::llround(yuan * 100);
}

}  // namespace guanchao
