#include "heat/collector_contract.h"

#include <algorithm>

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isOn(const Recordset& row, QStringView name) {
    return numericPrefix(row.value(name).toText()) > 0;
}

void write(const StoreFile& heat, const QString& assignments) {
    heat.open().execute(u"update canshu set "_s + assignments);
}

void writeAttention(const StoreFile& heat, const QString& column, const QString& typed) {
    const Activity activity(u"保存采集的关注度"_s);
    write(heat, column + u'=' + numberText(numericPrefix(typed)));
}

}  // namespace

std::optional<int> customDays(const QString& typed) {
    const double days = roundToWhole(numericPrefix(typed));
    return days >= 2 && days <= 1000 ? std::optional(static_cast<int>(days)) : std::nullopt;
}

std::optional<NewsSettings> readNewsSettings(const StoreFile& heat) {
    const Activity activity(u"读取采集设置"_s);
    Connection store = heat.open();
    const Recordset row(store, u"select  iszidinyinum,zidinyinum,yinqingurl  FROM canshu"_s);
    if (row.atEnd()) {
        return std::nullopt;
    }
    return NewsSettings{.customOn = isOn(row, u"iszidinyinum"),
                        .days = row.value(u"zidinyinum").toText(),
                        .searchTemplate = row.value(u"yinqingurl").toText()};
}

std::optional<CommoditySettings> readCommoditySettings(const StoreFile& heat) {
    const Activity activity(u"读取采集设置"_s);
    Connection store = heat.open();
    const Recordset row(store, u"select  shopguanzhudu,yinqingurl  FROM canshu"_s);
    if (row.atEnd()) {
        return std::nullopt;
    }
    return CommoditySettings{.attention = row.value(u"shopguanzhudu").toText(),
                             .searchTemplate = row.value(u"yinqingurl").toText()};
}

void writeCustomDays(const StoreFile& heat, bool on, int days) {
    const Activity activity(u"保存采集的自定义天数"_s);
    write(heat,
          u"iszidinyinum="_s + (on ? u'1' : u'0') + u",zidinyinum="_s + QString::number(days));
}

void writeNewsAttention(const StoreFile& heat, const QString& typed) {
    writeAttention(heat, u"guanzhudu"_s, typed);
}

void writeCommodityAttention(const StoreFile& heat, const QString& typed) {
    writeAttention(heat, u"shopguanzhudu"_s, typed);
}

void placeRunOrder(const StoreFile& heat, const QDate& day) {
    Connection store = heat.open();
    // Its values are not used: settings that can't be read end the launch here.
    const Recordset settings(
        store, u"select  iszidinyinum,zidinyinum,datetime(today) as today  FROM canshu"_s);
    store.execute(u"update canshu set mainisrun=1,isvisible=1,today="_s + quoted(timeText(day)));
}

void withdrawRunOrder(const StoreFile& heat) {
    write(heat, u"mainisrun=0"_s);
}

RunOrder readRunOrder(const StoreFile& heat, const Clock& clock) {
    Connection store = heat.open();
    const Recordset row(store,
                        u"select date(today) as today,isvisible,iszidinyinum,zidinyinum,guanzhudu,"
                        u"shopguanzhudu,yinqingurl from canshu"_s);
    RunOrder order;
    order.day = clock.now().date();
    if (row.atEnd()) {
        return order;
    }
    const QDate today = QDate::fromString(row.value(u"today").toText(), Qt::ISODate);
    if (today.isValid()) {
        order.day = std::max(order.day, today);
    }
    if (isOn(row, u"iszidinyinum")) {
        order.customDays = customDays(row.value(u"zidinyinum").toText()).value_or(0);
    }
    order.guanzhudu = numericPrefix(row.value(u"guanzhudu").toText());
    order.shopguanzhudu = numericPrefix(row.value(u"shopguanzhudu").toText());
    order.yinqingurl = row.value(u"yinqingurl").toText();
    order.windowWanted = isOn(row, u"isvisible");
    return order;
}

bool isRunWanted(const StoreFile& heat) {
    Connection store = heat.open();
    const Recordset row(store, u"select mainisrun from canshu"_s);
    return row.atEnd() || isOn(row, u"mainisrun");
}

}  // namespace guanchao
