// Day bars of the CSV service: /table.csv?s=600000.ss&a=… with the range in the query, months
// counted from 0. A header, then a line a day, newest first: date, open, high, low, close, volume
// in shares. It is read leniently, as mirrors of it are of many makings: a line that is no day is
// skipped.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

class CsvDayBars : public BarKind {
public:
    QStringList paths(const BarRange& range) const override;
    // None if the reply is shorter than a header and three lines, of which the last may be empty.
    ReadBars read(const QByteArray& body, const QString& dm) const override;
    bool isChecked() const override { return false; }
};

}  // namespace guanchao
