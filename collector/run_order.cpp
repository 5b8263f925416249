#include "collector/run_order.h"

#include "base/values.h"
#include "heat/news_settings.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

RunOrder readRunOrder(const StoreFile& heat, const Clock& clock) {
    Connection connection = heat.open();
    const Recordset settings(
        connection,
        u"select date(today) as today,isvisible,iszidinyinum,zidinyinum,guanzhudu,"
        u"shopguanzhudu,yinqingurl from canshu"_s);
    RunOrder order;
    order.day = clock.now().date();
    if (settings.atEnd()) {
        return order;
    }
    const auto text = [&](QStringView name) { return settings.value(name).toText(); };
    const QDate today = QDate::fromString(text(u"today"), Qt::ISODate);
    if (today.isValid()) {
        order.day = today;
    }
    if (numericPrefix(text(u"iszidinyinum")) > 0) {
        order.customDays = customDays(text(u"zidinyinum")).value_or(0);
    }
    order.guanzhudu = numericPrefix(text(u"guanzhudu"));
    order.shopguanzhudu = numericPrefix(text(u"shopguanzhudu"));
    order.yinqingurl = text(u"yinqingurl");
    order.windowWanted = numericPrefix(text(u"isvisible")) > 0;
    return order;
}

bool isRunWanted(const StoreFile& heat) {
    Connection connection = heat.open();
    const Recordset flag(connection, u"select mainisrun from canshu"_s);
    return flag.atEnd() || numericPrefix(flag.value(0).toText()) > 0;
}

}  // namespace guanchao
