// Where day data comes from: a CSV file, a terminal's .day file, or a folder of both, with all that
// is below it.
#pragma once

#include <QFileInfo>
#include <functional>
#include <optional>

#include "tools/history_builder/csv_columns.h"
#include "tools/history_builder/day_rows.h"

namespace guanchao {

class DaySource {
public:
    // `unit` is the one of volumes in files whose header doesn't tell it; days behind today are
    // skipped. Raises std::runtime_error if the folder holds no such file.
    DaySource(const QString& path, std::optional<VolumeUnit> unit, const QDate& today);

    // How far the reading is; called every few thousand rows.
    std::function<void(qint64 bytes, qint64 ofBytes)> meanwhile = [](qint64, qint64) {};

    // Gives all rows. Raises std::runtime_error, in Chinese and naming the file and the line, for
    // the first bad row and for a file that can't be read.
    void read(const TakeDay& take);

    const SkippedRows& skipped() const { return skipped_; }

private:
    void readFile(const QFileInfo& file, const TakeDay& take);

    QList<QFileInfo> files_;
    std::optional<VolumeUnit> unit_;
    QDate today_;
    qint64 bytes_ = 0;
    qint64 bytesBefore_ = 0;  // of the file that is being read
    SkippedRows skipped_;
};

}  // namespace guanchao
