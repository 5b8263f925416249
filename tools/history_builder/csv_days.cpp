#include "tools/history_builder/csv_days.h"

#include <algorithm>
#include <cmath>

#include "services/stock_code.h"
#include "tools/history_builder/code_forms.h"
#include "tools/history_builder/csv_fields.h"
#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double sharesInLot = 100;
constexpr double mostPrice = 1e8;  // in hundredths

bool isNothing(QStringView text) {
    return isMissing(text) || numberIn(text) == 0.0;
}

}  // namespace

CsvDays::CsvDays(const QString& path, std::optional<VolumeUnit> unit)
    : path_(path), unit_(unit), blocks_(path), block_(blocks_.next()) {
    atLine(path_, 1, [this] { readHeader(); });
}

void CsvDays::readHeader() {
    const QString header = block_.value(0);
    separator_ = header.contains(u'\t') && !header.contains(u',') ? u'\t' : u',';
    splitFields(header, separator_, fields_);
    columns_ = dayColumns(fields_);
    if (!columns_.has(DayColumn::code)) {
        codes_[{}] = stockCodeOfFile(path_);
        if (codes_[{}].isEmpty()) {
            fail(u"表头里没有“代码”，文件名里也没有股票代码"_s);
        }
    }
    if (columns_.written) {
        unit_ = columns_.written;
    } else if (!unit_) {
        unit_ = columns_.usual;
    }
}

void CsvDays::read(const TakeDay& take, SkippedRows& skipped,
                   const std::function<void(qint64)>& meanwhile) {
    qint64 number = 1;
    for (qsizetype first = 1; !block_.isEmpty(); first = 0, block_ = blocks_.next()) {
        for (qsizetype line = first; line < block_.size(); ++line) {
            ++number;
            atLine(path_, number, [&] { readLine(block_[line], take, skipped); });
        }
        meanwhile(blocks_.bytesRead());
    }
}

void CsvDays::readLine(const QString& line, const TakeDay& take, SkippedRows& skipped) {
    if (line.trimmed().isEmpty()) {
        return;
    }
    splitFields(line, separator_, fields_);
    const bool isTooLong = fields_.size() > columns_.count &&
                           std::any_of(fields_.cbegin() + columns_.count, fields_.cend(),
                                       [](QStringView beyond) { return !beyond.isEmpty(); });
    if (fields_.size() < columns_.count || isTooLong) {
        fail(u"应有 "_s + QString::number(columns_.count) + u" 个字段，却有 "_s +
             QString::number(fields_.size()) + u" 个"_s);
    }
    const QString dm = codeOf(fields_);
    if (isOfBeijing(dm)) {
        ++skipped.beijing;
    } else if (!isStockCode(dm) && !isIndex(dm)) {
        ++skipped.otherKinds;
    } else if (isHalted(dm, fields_)) {
        ++skipped.halted;
    } else {
        take(rowOf(dm, fields_));
    }
}

QString CsvDays::codeOf(const Fields& fields) {
    const QString written =
        columns_.has(DayColumn::code) ? fields[columns_.at(DayColumn::code)].toString() : QString();
    QString& dm = codes_[written];
    if (dm.isEmpty()) {
        dm = stockCode(written);
    }
    if (dm.isEmpty()) {
        fail(u"“"_s + written + u"”不是代码，例如 SH600000"_s);
    }
    return dm;
}

bool CsvDays::isHalted(const QString& dm, const Fields& fields) const {
    const auto lacks = [&](DayColumn column) { return isNothing(fields[columns_.at(column)]); };
    return lacks(DayColumn::open) || lacks(DayColumn::high) || lacks(DayColumn::low) ||
           lacks(DayColumn::close) || (lacks(DayColumn::volume) && !isIndex(dm));
}

DayRow CsvDays::rowOf(const QString& dm, const Fields& fields) const {
    const auto field = [&](DayColumn column) {
        return columns_.has(column) ? fields[columns_.at(column)] : QStringView();
    };
    DayRow row;
    row.dm = dm;
    row.day = dayFrom(field(DayColumn::day));
    row.open = priceFrom(u"开盘"_s, field(DayColumn::open));
    row.high = priceFrom(u"最高"_s, field(DayColumn::high));
    row.low = priceFrom(u"最低"_s, field(DayColumn::low));
    row.close = priceFrom(u"收盘"_s, field(DayColumn::close));
    row.formerClose = formerClose(row.close, fields);
    row.volume = sharesOf(field(DayColumn::volume));
    const QStringView turnover = field(DayColumn::turnover);
    row.turnover = isMissing(turnover) ? 0 : columns_.yuan * numberFrom(u"成交额"_s, turnover);
    if (columns_.has(DayColumn::factor)) {
        row.factor = aboveZero(u"复权因子"_s, field(DayColumn::factor));
    }
    checkRow(row);
    return row;
}

qint64 CsvDays::formerClose(qint64 close, const Fields& fields) const {
    if (columns_.has(DayColumn::formerClose)) {
        const QStringView text = fields[columns_.at(DayColumn::formerClose)];
        return isNothing(text) ? 0 : priceFrom(u"前收盘"_s, text);
    }
    if (columns_.has(DayColumn::change)) {
        const std::optional<double> change = numberIn(fields[columns_.at(DayColumn::change)]);
        const double former = change ? static_cast<double>(close) - *change * 100 : 0;
        return former > 0 && former < mostPrice ? std::llround(former) : 0;
    }
    return 0;
}

double CsvDays::sharesOf(QStringView volume) const {
    if (isNothing(volume)) {
        return 0;
    }
    if (!unit_) {
        fail(
            u"表头没有写明成交量的单位。请在命令里加上 --lots（文件里是手）或 --shares（文件里是股）"_s);
    }
    return numberFrom(u"成交量"_s, volume) * (unit_ == VolumeUnit::lots ? sharesInLot : 1);
}

}  // namespace guanchao
