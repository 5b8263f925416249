#include "research/stock_history.h"

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

StockHistory::StockHistory(const StoreFile& secondHistory)
    : connection_(secondHistory.open()), copies_(connection_) {}

bool StockHistory::makeTableIfMissing(const QString& dm) {
    const Recordset table(connection_,
                          u"select sql from sqlite_master where tbl_name="_s + quoted(dm));
    if (!(table.atStart() && table.atEnd())) {
        return false;
    }
    createTableFromContent(connection_, dm, u"select *  from   nishihq2"_s);
    return true;
}

Recordset StockHistory::daysBack(const QString& dm, const QString& day) {
    return days(
        dm, u"where date(shijian)<="_s + quoted(day) + u" order by date(shijian) desc limit 30"_s);
}

Recordset StockHistory::daysAfter(const QString& dm, const QString& day) {
    return days(
        dm, u"where  date(shijian)>"_s + quoted(day) + u" order by date(shijian) asc limit 10"_s);
}

Recordset StockHistory::daysFrom(const QString& dm, const QString& day) {
    return days(
        dm, u"where  date(shijian)>="_s + quoted(day) + u" order by date(shijian) asc limit 10"_s);
}

Recordset StockHistory::days(const QString& dm, const QString& condition) {
    copies_.coverByDay(dm, u"shijian,kp,zg,zd,sp,fuquanyz,chengjiaol"_s);
    return Recordset(connection_,
                     u"select  date(shijian) as shijian,fuquanyz*cast(sp as Double) as fuquansp,"
                     u"fuquanyz*cast(kp as Double) as fuquankp,cast(sp as Double) as sp,"
                     u"cast(zg as Double) as zg,cast(zd as Double) as zd,chengjiaol from "_s +
                         quotedName(dm) + u"   "_s + condition);
}

}  // namespace guanchao
