#include "tools/history_builder/terminal_days.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>

#include "base/activity.h"
#include "services/stock_code.h"
#include "tools/history_builder/code_forms.h"
#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype recordBytes = 32;

// Little endian: day as 20261120, open, high, low, close in hundredths, turnover in yuan as a
// floating point number, volume in shares, four bytes of nothing.
DayRow rowOf(const QString& dm, const char* record) {
    const auto number = [&](qsizetype field) {
        return qFromLittleEndian<quint32>(record + 4 * field);
    };
    DayRow row;
    row.dm = dm;
    const auto day = static_cast<int>(number(0));
    row.day = QDate(day / 10000, day / 100 % 100, day % 100);
    row.open = number(1);
    row.high = number(2);
    row.low = number(3);
    row.close = number(4);
    row.turnover = static_cast<double>(qFromLittleEndian<float>(record + 20));
    row.volume = number(6);
    return row;
}

bool isHalted(const DayRow& row) {
    return row.open == 0 || row.high == 0 || row.low == 0 || row.close == 0 ||
           (row.volume == 0 && !isIndex(row.dm));
}

QByteArray recordsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw OperationError(u"不能读取文件 "_s + path + u"（"_s + file.errorString() + u"）。"_s);
    }
    QByteArray bytes = file.readAll();
    if (bytes.size() % recordBytes != 0) {
        fail(path + u"：不是完整的日线文件，长度不是 32 的倍数"_s);
    }
    return bytes;
}

}  // namespace

void readTerminalDays(const QString& path, const TakeDay& take, SkippedRows& skipped) {
    const QString dm = stockCodeOfFile(path);
    if (dm.isEmpty()) {
        fail(path + u"：文件名里没有股票代码"_s);
    }
    const QByteArray records = recordsOf(path);
    const qsizetype count = records.size() / recordBytes;
    if (isOfBeijing(dm)) {
        skipped.beijing += count;
        return;
    }
    if (!isStockCode(dm) && !isIndex(dm)) {
        skipped.otherKinds += count;
        return;
    }
    for (qsizetype at = 0; at < count; ++at) {
        const DayRow row = rowOf(dm, records.constData() + at * recordBytes);
        if (isHalted(row)) {
            ++skipped.halted;
        } else {
            atLine(path, at + 1, [&] { checkRow(row); });
            take(row);
        }
    }
}

}  // namespace guanchao
