#include "research/day_batches.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

constexpr qint64 rowsOfBatch = 400'000;
// In hundredths; what is more comes of factors that are none.
constexpr double mostPrice = 1e8;

}  // namespace

DayBatches::DayBatches(Connection& first, Connection& second)
    : first_(first, DayTables::Kind::first), second_(second, DayTables::Kind::second) {}

// A code whose days come one behind the other stays in one batch.
void DayBatches::take(const DayRow& row) {
    if (held_ >= rowsOfBatch && row.dm != lastCode_) {
        write();
    }
    if (row.dm != lastCode_ || held_ == 0) {
        lastCode_ = row.dm;
        ofLastCode_ = &codes_[row.dm];
    }
    *ofLastCode_ << row;
    ++held_;
    ++count_.rows;
}

AddedDays DayBatches::finish() {
    write();
    first_.finish();
    second_.finish();
    return count_;
}

void DayBatches::write() {
    for (auto code = codes_.begin(); code != codes_.end(); ++code) {
        QList<DayRow>& rows = code.value();
        std::ranges::stable_sort(rows, {}, &DayRow::day);
        findFormerCloses(code.key(), rows);
        count_.added += first_.add(code.key(), rows);
        second_.add(code.key(), rows);
    }
    codes_.clear();
    held_ = 0;
}

void DayBatches::findFormerCloses(const QString& dm, QList<DayRow>& rows) {
    std::optional<DayRow> before;
    for (DayRow& row : rows) {
        if (row.formerClose == 0 && !before) {
            before = first_.dayBefore(dm, row.day);
        }
        if (row.formerClose == 0 && before) {
            const double close = static_cast<double>(before->close) * before->factor / row.factor;
            row.formerClose = close < mostPrice ? std::llround(close) : 0;
        }
        before = row;
    }
    count_.withoutFormerClose +=
        rows.removeIf([](const DayRow& row) { return row.formerClose == 0; });
}

}  // namespace guanchao
