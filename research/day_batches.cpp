#include "research/day_batches.h"

#include <algorithm>
#include <optional>

namespace guanchao {

namespace {

constexpr qint64 rowsOfBatch = 400'000;

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
        const QList<DayRow> stored = first_.daysFrom(code.key(), rows.first().day);
        findFormerCloses(rows, stored);
        count_.added += first_.add(code.key(), rows);
        second_.add(code.key(), rows);
        joinStored(stored, rows);
    }
    codes_.clear();
    held_ = 0;
}

// Where a day is stored already, the stored one counts.
void DayBatches::findFormerCloses(QList<DayRow>& rows, const QList<DayRow>& stored) {
    auto there = stored.cbegin();
    std::optional<DayRow> before;
    for (DayRow& row : rows) {
        for (; there != stored.cend() && there->day < row.day; ++there) {
            if (!before || before->day <= there->day) {
                before = *there;
            }
        }
        if (row.formerClose == 0 && before) {
            row.formerClose = formerCloseBy(*before, row.factor);
        }
        before = row;
    }
    count_.withoutFormerClose +=
        rows.removeIf([](const DayRow& row) { return row.formerClose == 0; });
}

void DayBatches::joinStored(const QList<DayRow>& stored, const QList<DayRow>& rows) {
    for (qsizetype at = 1; at < stored.size(); ++at) {
        const DayRow& day = stored[at];
        const auto next = std::ranges::lower_bound(rows, day.day, {}, &DayRow::day);
        const bool isBehindNew = next != rows.begin() && std::prev(next)->day > stored[at - 1].day;
        if (isBehindNew && goesBy(stored[at - 1], day)) {
            const qint64 formerClose = formerCloseBy(*std::prev(next), day.factor);
            first_.setFormerClose(day.dm, day.day, formerClose);
            second_.setFormerClose(day.dm, day.day, formerClose);
        }
    }
}

}  // namespace guanchao
