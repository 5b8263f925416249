// Day data from a CSV file of any encoding that the program reads.
#pragma once

#include <QHash>
#include <functional>

#include "formats/text_file.h"
#include "tools/history_builder/csv_columns.h"
#include "tools/history_builder/day_rows.h"

namespace guanchao {

class CsvDays {
public:
    // `unit` is what the user says of the volumes where the header doesn't. The code of a file
    // without such a column is in its name. Raises OperationError if the file can't be read, and
    // std::runtime_error, naming the line, for a header that doesn't tell the columns.
    CsvDays(const QString& path, std::optional<VolumeUnit> unit);

    // Gives the rows one by one. `meanwhile` hears now and then how many bytes have been read.
    // Raises std::runtime_error, naming the line, for the first bad row.
    void read(const TakeDay& take, SkippedRows& skipped,
              const std::function<void(qint64)>& meanwhile);

private:
    using Fields = QList<QStringView>;

    void readHeader();
    void readLine(const QString& line, const TakeDay& take, SkippedRows& skipped);
    QString codeOf(const Fields& fields);
    bool isHalted(const QString& dm, const Fields& fields) const;
    DayRow rowOf(const QString& dm, const Fields& fields) const;
    qint64 formerClose(qint64 close, const Fields& fields) const;
    double sharesOf(QStringView volume) const;

    QString path_;
    std::optional<VolumeUnit> unit_;
    TextBlocks blocks_;
    QStringList block_;
    QChar separator_ = u',';
    DayColumns columns_;
    QHash<QString, QString> codes_;  // by what the file writes
    Fields fields_;
};

}  // namespace guanchao
