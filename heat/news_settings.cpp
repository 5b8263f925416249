#include "heat/news_settings.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

std::optional<int> customDays(const QString& typed) {
    const double days = roundToWhole(numericPrefix(typed));
    return days >= 2 && days <= 1000 ? std::optional(static_cast<int>(days)) : std::nullopt;
}

std::optional<NewsSettings::Stored> NewsSettings::read() const {
    const Activity activity(u"读取采集设置"_s);
    Connection store = stores_.heat.open();
    const Recordset row(store, u"select  iszidinyinum,zidinyinum,yinqingurl  FROM canshu"_s);
    if (row.atEnd()) {
        return std::nullopt;
    }
    return Stored{.customOn = numericPrefix(row.value(u"iszidinyinum").toText()) > 0,
                  .days = row.value(u"zidinyinum").toText(),
                  .searchTemplate = row.value(u"yinqingurl").toText()};
}

void NewsSettings::writeCustom(bool on, int days) const {
    const Activity activity(u"保存采集的自定义天数"_s);
    stores_.heat.open().execute(u"update canshu set iszidinyinum="_s + (on ? u'1' : u'0') +
                                u",zidinyinum="_s + QString::number(days));
}

void NewsSettings::writeAttention(const QString& typed) const {
    const Activity activity(u"保存采集的关注度"_s);
    stores_.heat.open().execute(u"update canshu set guanzhudu="_s +
                                numberText(numericPrefix(typed)));
}

}  // namespace guanchao
