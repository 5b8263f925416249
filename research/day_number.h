// A day as one whole number, yyyymmdd, whose order is that of the days.
#pragma once

#include <QDate>
#include <QString>
#include <cstdint>
#include <string_view>

namespace guanchao {

using DayNumber = std::int32_t;

// Of a text that the store's date() gives. What it gives for a day before the year 0 is 0.
inline DayNumber dayNumber(std::string_view text) {
    constexpr std::string_view form = "dddd-dd-dd";
    if (text.size() != form.size()) {
        return 0;
    }
    DayNumber day = 0;
    for (size_t at = 0; at < form.size(); ++at) {
        if (form[at] == 'd') {
            day = day * 10 + (text[at] - '0');
        }
    }
    return day;
}

inline DayNumber dayNumber(const QString& text) {
    return dayNumber(std::string_view(text.toLatin1()));
}

inline int yearOf(DayNumber day) {
    return day / 10000;
}

inline QDate dateOf(DayNumber day) {
    return {yearOf(day), day / 100 % 100, day % 100};
}

// yyyy-MM-dd.
inline QString dayText(DayNumber day) {
    return QString::asprintf("%04d-%02d-%02d", yearOf(day), day / 100 % 100, day % 100);
}

}  // namespace guanchao
