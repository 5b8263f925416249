#include "research/stock_row.h"

#include <algorithm>
#include <cmath>

#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t fewestDaysBack = 10;
constexpr size_t mostDaysBack = 30;
constexpr size_t mostDaysAhead = 10;
constexpr size_t daysOfMeanVolume = 10;

// The numbers of days counted from one place: the first of them is day 1.
class Days {
public:
    Days(const StockColumns& stock, size_t begin, int step)
        : stock_(stock), begin_(begin), step_(step) {}

    double sp(size_t day) const { return told(&StockColumns::sp, day); }
    double zg(size_t day) const { return told(&StockColumns::zg, day); }
    double fuquansp(size_t day) const { return told(&StockColumns::fuquansp, day); }
    double fuquankp(size_t day) const { return told(&StockColumns::fuquankp, day); }
    double chengjiaol(size_t day) const { return told(&StockColumns::chengjiaol, day); }

private:
    double told(double (StockColumns::*number)(size_t) const, size_t day) const {
        const size_t at = step_ > 0 ? begin_ + (day - 1) : begin_ - (day - 1);
        return required((stock_.*number)(at), stock_.day(at));
    }

    const StockColumns& stock_;
    size_t begin_;
    int step_;
};

// Newest first, as many as `count`.
void takeBack(const Days& day, size_t count, StockRow& row) {
    row.sp = day.sp(1);
    row.zg = day.zg(1);
    row.fuquankp = day.fuquankp(1);
    row.fuquansp = day.fuquansp(1);
    row.chengjl = day.chengjiaol(1);
    row.qian1sp = day.fuquansp(2);
    row.qian3sp = day.fuquansp(4);
    if (count >= 11) {
        row.qian10sp = day.fuquansp(11);
    }
    if (count >= 29) {
        row.qian30sp = day.fuquansp(count);
    }
    double volumes = 0;
    for (size_t at = 1; at <= daysOfMeanVolume; ++at) {
        volumes += day.chengjiaol(at);
    }
    row.chengjl10ri = volumes / static_cast<double>(daysOfMeanVolume);
}

// Oldest first.
void takeAhead(const Days& day, size_t count, StockRow& row) {
    row.hou1kp = day.fuquankp(1);
    row.hou1sp = day.fuquansp(1);
    row.hou1liang = day.chengjiaol(1);
    if (count >= 2) {
        row.hou2kp = day.fuquankp(2);
        row.hou2sp = day.fuquansp(2);
    }
    if (count >= 6) {
        row.hou5sp = day.fuquansp(6);
    }
    if (count >= 9) {
        row.hou10sp = day.fuquansp(count);
    }
}

}  // namespace

StockRowBuilder::StockRowBuilder(StockHistory& history, Connection& main)
    : history_(history), main_(main) {}

std::optional<StockRow> StockRowBuilder::build(const QString& dm, DayNumber D) {
    const StockColumns& stock = history_.of(dm);
    const size_t behind = stock.firstBehind(D);
    const size_t back = std::min(behind, mostDaysBack);
    const size_t ahead = std::min(stock.size() - behind, mostDaysAhead);
    if (back < fewestDaysBack) {
        return std::nullopt;
    }
    StockRow row;
    row.dm = dm;
    takeBack({stock, behind - 1, -1}, back, row);
    if (ahead == 0) {
        return std::nullopt;
    }
    takeAhead({stock, behind, 1}, ahead, row);
    row.jc = nameOf(dm);
    return row;
}

QString StockRowBuilder::nameOf(const QString& dm) {
    const auto known = names_.constFind(dm);
    if (known != names_.cend()) {
        return *known;
    }
    return *names_.insert(dm, shortName(main_, dm).value_or(QString()));
}

double required(double number, DayNumber day) {
    if (std::isnan(number)) {
        throw MissingNumber(day);
    }
    return number;
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
