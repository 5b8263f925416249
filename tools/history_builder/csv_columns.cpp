#include "tools/history_builder/csv_columns.h"

#include <QStringList>

#include "tools/history_builder/row_failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// In the order of DayColumn. The last name of each is the one for the user.
const std::array<QStringList, knownColumns> namesOfColumns = {{
    {u"shijian"_s, u"date"_s, u"trade_date"_s, u"day"_s, u"datetime"_s, u"交易日期"_s, u"时间"_s,
     u"日期"_s},
    {u"kp"_s, u"open"_s, u"开盘价"_s, u"开盘"_s},
    {u"zg"_s, u"high"_s, u"最高价"_s, u"最高"_s},
    {u"zd"_s, u"low"_s, u"最低价"_s, u"最低"_s},
    {u"sp"_s, u"close"_s, u"收盘价"_s, u"收盘"_s},
    {u"chengjiaol"_s, u"volume"_s, u"vol"_s, u"成交量"_s},
    {u"dm"_s, u"code"_s, u"ts_code"_s, u"symbol"_s, u"股票代码"_s, u"证券代码"_s, u"代码"_s},
    {u"qiansp"_s, u"pre_close"_s, u"preclose"_s, u"prev_close"_s, u"前收盘价"_s, u"昨收"_s,
     u"昨收盘"_s, u"前收盘"_s},
    {u"change"_s, u"涨跌额"_s},
    {u"chengjiaoe"_s, u"amount"_s, u"money"_s, u"成交金额"_s, u"成交额"_s},
    {u"fuquanyz"_s, u"adj_factor"_s, u"hfq_factor"_s, u"backadjustfactor"_s, u"后复权因子"_s,
     u"复权因子"_s},
}};

// A column's name and the unit that may stand behind it in brackets: 成交量(手).
struct ColumnName {
    explicit ColumnName(QStringView written) {
        const QString text =
            written.toString().toLower().replace(u'（', u'(').remove(u'）').remove(u')');
        name = text.section(u'(', 0, 0).trimmed();
        unit = text.section(u'(', 1).trimmed();
    }

    QString name;
    QString unit;
};

std::optional<VolumeUnit> volumeUnit(const QString& unit) {
    if (unit == u"手"_s || unit == u"lots"_s) {
        return VolumeUnit::lots;
    }
    return unit == u"股"_s || unit == u"shares"_s ? std::optional(VolumeUnit::shares)
                                                  : std::nullopt;
}

double yuanIn(const QString& unit) {
    return unit == u"千元"_s ? 1e3 : unit == u"万元"_s ? 1e4 : 1;
}

void noteUnits(DayColumns& columns, const QList<QStringView>& header) {
    const ColumnName volume(header[columns.at(DayColumn::volume)]);
    columns.written = volumeUnit(volume.unit);
    // Tushare, alone with this name of the code, has lots and thousands of yuan.
    const bool tushare = columns.has(DayColumn::code) &&
                         ColumnName(header[columns.at(DayColumn::code)]).name == u"ts_code"_s;
    if (volume.name == u"chengjiaol"_s) {
        columns.usual = VolumeUnit::shares;
    } else if (tushare && volume.name == u"vol"_s) {
        columns.usual = VolumeUnit::lots;
    }
    if (columns.has(DayColumn::turnover)) {
        const ColumnName turnover(header[columns.at(DayColumn::turnover)]);
        columns.yuan = tushare && turnover.unit.isEmpty() ? 1e3 : yuanIn(turnover.unit);
    }
}

}  // namespace

DayColumns dayColumns(const QList<QStringView>& header) {
    DayColumns columns;
    columns.places.fill(-1);
    columns.count = header.size();
    for (qsizetype place = 0; place < header.size(); ++place) {
        const QString name = ColumnName(header[place]).name;
        for (size_t column = 0; column < namesOfColumns.size(); ++column) {
            if (columns.places[column] < 0 && namesOfColumns[column].contains(name)) {
                columns.places[column] = place;
            }
        }
    }
    QStringList missing;
    for (size_t column = 0; column < neededColumns; ++column) {
        if (columns.places[column] < 0) {
            missing << namesOfColumns[column].last();
        }
    }
    if (!missing.isEmpty()) {
        fail(u"表头里没有“"_s + missing.join(u"”“"_s) +
             u"”。第一行要写明每一列是什么，例如 日期,开盘,最高,最低,收盘,成交量(股)"_s);
    }
    noteUnits(columns, header);
    return columns;
}

}  // namespace guanchao
