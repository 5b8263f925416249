// One INSERT for the days of a history database: prepared once, its values bound as numbers.
#pragma once

#include <cstdint>

#include "research/day_row.h"
#include "store/sqlite.h"

namespace guanchao {

class DayInsert {
public:
    // Whether the table has a column with the code before those of the day.
    enum class Code : std::uint8_t { without, with };

    // Both raise StoreError.
    DayInsert(Connection& store, const QString& table, Code code);
    void row(const DayRow& row);

private:
    Connection& store_;
    QString text_;
    StatementHandle statement_;
    bool hasCode_;
};

}  // namespace guanchao
