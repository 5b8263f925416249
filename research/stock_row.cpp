#include "research/stock_row.h"

#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int fewestDaysBack = 10;

}  // namespace

StockRowBuilder::StockRowBuilder(StockHistory& history, Connection& main, const ResearchWork& work)
    : history_(history), main_(main), work_(work) {}

std::optional<StockRow> StockRowBuilder::build(const QString& dm, const QString& D) {
    if (history_.makeTableIfMissing(dm)) {
        work_.endIfAbandoned();
    }
    StockRow row;
    row.dm = dm;
    if (!readBack(D, row) || !readForward(D, row)) {
        return std::nullopt;
    }
    row.jc = shortName(main_, dm).value_or(QString());
    return row;
}

bool StockRowBuilder::readBack(const QString& D, StockRow& row) {
    Recordset day = history_.daysBack(row.dm, D);
    if (day.count() < fewestDaysBack) {
        return false;
    }
    double volumes = 0;
    int volumeDays = 0;
    for (int counter = 1; !day.atEnd(); day.moveNext(), ++counter) {
        const auto value = [&](QStringView name) { return day.value(name).toNumber(); };
        if (counter == 1) {
            row.sp = value(u"sp");
            row.zg = value(u"zg");
            row.fuquankp = value(u"fuquankp");
            row.fuquansp = value(u"fuquansp");
            row.chengjl = value(u"chengjiaol");
        }
        if (counter == 2) {
            row.qian1sp = value(u"fuquansp");
        }
        if (counter < 11) {
            volumes += value(u"chengjiaol");
            ++volumeDays;
        }
        if (counter == 4) {
            row.qian3sp = value(u"fuquansp");
        }
        if (counter == 11) {
            row.qian10sp = value(u"fuquansp");
        }
        if (counter > 28) {
            row.qian30sp = value(u"fuquansp");
        }
        work_.endIfAbandoned();
    }
    row.chengjl10ri = volumes / volumeDays;
    return true;
}

bool StockRowBuilder::readForward(const QString& D, StockRow& row) {
    Recordset day = history_.daysAfter(row.dm, D);
    if (day.atEnd()) {
        return false;
    }
    for (int counter = 1; !day.atEnd(); day.moveNext(), ++counter) {
        const auto value = [&](QStringView name) { return day.value(name).toNumber(); };
        if (counter == 1) {
            row.hou1kp = value(u"fuquankp");
            row.hou1sp = value(u"fuquansp");
            row.hou1liang = value(u"chengjiaol");
        }
        if (counter == 2) {
            row.hou2kp = value(u"fuquankp");
            row.hou2sp = value(u"fuquansp");
        }
        if (counter == 6) {
            row.hou5sp = value(u"fuquansp");
        }
        if (counter > 8) {
            row.hou10sp = value(u"fuquansp");
        }
        work_.endIfAbandoned();
    }
    return true;
}

QString insertStatement(const StockRow& row, const QString& riqi, const QString& ticai,
                        bool withHigh) {
    QStringList numbers = {numberText(row.fuquansp), numberText(row.sp)};
    if (withHigh) {
        numbers << numberText(row.zg);
    }
    for (const double number : {row.qian1sp, row.qian3sp, row.qian10sp, row.qian30sp, row.fuquankp,
                                row.chengjl, row.chengjl10ri, row.hou1kp, row.hou2kp, row.hou1sp,
                                row.hou2sp, row.hou5sp, row.hou10sp, row.hou1liang}) {
        numbers << numberText(number);
    }
    return u"insert into xuanticaigu(riqi,dm,jc,ticai,fuquansp,sp,"_s +
           (withHigh ? u"zg,"_s : QString()) +
           u"qian1sp,qian3sp,qian10sp,qian30sp,fuquankp,chengjl,chengjl10ri,hou1kp,hou2kp,hou1sp,"
           u"hou2sp,hou5sp,hou10sp,hou1liang) values("_s +
           quoted(riqi) + u',' + quoted(row.dm) + u',' + quoted(row.jc) + u',' + quoted(ticai) +
           u',' + numbers.join(u',') + u")"_s;
}

}  // namespace guanchao
