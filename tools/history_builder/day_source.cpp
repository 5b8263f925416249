#include "tools/history_builder/day_source.h"

#include <QDirIterator>
#include <algorithm>

#include "tools/history_builder/csv_days.h"
#include "tools/history_builder/row_failure.h"
#include "tools/history_builder/terminal_days.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<QFileInfo> filesIn(const QString& path) {
    if (!QFileInfo(path).isDir()) {
        return {QFileInfo(path)};
    }
    QList<QFileInfo> files;
    QDirIterator all(path, {u"*.day"_s, u"*.csv"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        files << all.nextFileInfo();
    }
    std::ranges::sort(files, {}, &QFileInfo::filePath);
    return files;
}

}  // namespace

DaySource::DaySource(const QString& path, std::optional<VolumeUnit> unit, const QDate& today)
    : files_(filesIn(path)), unit_(unit), today_(today) {
    if (files_.isEmpty()) {
        fail(path + u"：里面没有 .day 文件，也没有 .csv 文件"_s);
    }
    for (const QFileInfo& file : std::as_const(files_)) {
        bytes_ += file.size();
    }
}

void DaySource::read(const TakeDay& take) {
    const TakeDay takePast = [&](const DayRow& row) {
        if (row.day > today_) {
            ++skipped_.future;
        } else {
            take(row);
        }
    };
    for (const QFileInfo& file : std::as_const(files_)) {
        readFile(file, takePast);
        bytesBefore_ += file.size();
        meanwhile(bytesBefore_, bytes_);
    }
}

void DaySource::readFile(const QFileInfo& file, const TakeDay& take) {
    if (file.suffix().compare(u"day"_s, Qt::CaseInsensitive) == 0) {
        readTerminalDays(file.filePath(), take, skipped_);
        return;
    }
    CsvDays(file.filePath(), unit_).read(take, skipped_, [this](qint64 bytes) {
        meanwhile(bytesBefore_ + bytes, bytes_);
    });
}

}  // namespace guanchao
