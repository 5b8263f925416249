// Which column of a CSV file holds what, by the names of its header: those of this program and of
// the common libraries, English and Chinese.
#pragma once

#include <QList>
#include <QStringView>
#include <array>
#include <cstdint>
#include <optional>

namespace guanchao {

enum class VolumeUnit : std::uint8_t { shares, lots };

enum class DayColumn : std::uint8_t {
    day,
    open,
    high,
    low,
    close,
    volume,  // these must be there
    code,
    formerClose,
    change,
    turnover,
    factor
};
inline constexpr int neededColumns = 6;
inline constexpr int knownColumns = 11;

struct DayColumns {
    qsizetype at(DayColumn column) const { return places[static_cast<size_t>(column)]; }
    bool has(DayColumn column) const { return at(column) >= 0; }

    std::array<qsizetype, knownColumns> places;  // -1: none
    qsizetype count = 0;                         // of the columns, known or not
    std::optional<VolumeUnit> written;           // the unit of the volume that the header names
    std::optional<VolumeUnit> usual;             // the one of the library whose names these are
    double yuan = 1;                             // in one of the turnover's unit
};

// Raises std::runtime_error, in Chinese, if this is no header or one that lacks a column.
DayColumns dayColumns(const QList<QStringView>& header);

}  // namespace guanchao
