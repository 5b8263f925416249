#include "monitor/poll_list.h"

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void keep(Connection& connection, Recordset& stocks) {
    for (; !stocks.atEnd(); stocks.moveNext()) {
        connection.execute(u"update jiankonghq set tempdel=0 where dm="_s +
                           quoted(stocks.value(u"dm").toText()));
    }
}

}  // namespace

std::optional<Value> storedFrequency(Connection& connection) {
    const Recordset frequency(connection, u"select  jiankongpinlu from tempcanshu"_s);
    if (frequency.atEnd()) {
        return std::nullopt;
    }
    return frequency.value(u"jiankongpinlu");
}

Value neededFrequency(Connection& connection) {
    const std::optional<Value> frequency = storedFrequency(connection);
    if (!frequency) {
        throw OperationError(u"参数表 tempcanshu 没有记录，读不到监控频率。"_s);
    }
    return *frequency;
}

int pollListCount(Connection& connection) {
    const Recordset count(connection, u"select  count(*) as  count from jiankonghq"_s);
    return static_cast<int>(count.value(u"count").toNumber());
}

void addToPollList(Connection& connection, const QString& dm, const QString& jc) {
    const Recordset listed(connection, u"select  dm,jc from jiankonghq  where dm="_s + quoted(dm));
    if (listed.atEnd()) {
        connection.execute(u"insert into jiankonghq(dm,jc) values("_s + quoted(dm) + u',' +
                           quoted(jc) + u")"_s);
    }
}

void sweepPollList(Connection& connection) {
    connection.execute(u"update jiankonghq set tempdel=1"_s);
    Recordset stocks(connection, u"select  dm from gegujiankong"_s);
    keep(connection, stocks);
    Recordset themes(connection, u"select  zhutiname from zhutijiankong"_s);
    for (; !themes.atEnd(); themes.moveNext()) {
        Recordset members(connection, u"select  dm,jc from dzhzhuti  where zhutiname="_s +
                                          quoted(themes.value(u"zhutiname").toText()));
        keep(connection, members);
    }
    connection.execute(u"delete from jiankonghq where tempdel=1"_s);
}

}  // namespace guanchao
