#include "research/kept_conditions.h"

#include <QSettings>

#include "base/activity.h"
#include "research/named_settings.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString themeRule =
    u" and ticaizhang>0 and zhangtinshu>zonggeshu/4+2 and yizishu>-1 and dapanzhang>-10 and"
    u" touguzhangfu>9"_s;
const QString lastKey = u"上次的条件"_s;
const QString namedGroup = u"常用条件/"_s;

QString keyOf(const QString& name) {
    return namedGroup + keyOfName(name);
}

}  // namespace

const QList<NamedCondition>& offeredConditions() {
    static const QList<NamedCondition> conditions = {
        {u"当日涨停，前期未涨"_s,
         themeRule + u" and 股涨幅>9.5 and 量比>0 and 开盘涨<2 and 前3涨<0 and 前10涨<0"_s},
        {u"当日上涨，前3日涨不到20%"_s,
         themeRule + u" and 股涨幅>0 and 量比>0 and 开盘涨<2 and 前3涨<20"_s},
        {u"所有选出的股票"_s, QString()},
    };
    return conditions;
}

std::optional<QString> KeptConditions::last() const {
    const QSettings settings(iniPath_, QSettings::IniFormat);
    return settings.contains(lastKey) ? std::optional(settings.value(lastKey).toString())
                                      : std::nullopt;
}

void KeptConditions::keepLast(const QString& text) {
    if (text != last()) {
        write(lastKey, text);
    }
}

QList<NamedCondition> KeptConditions::named() const {
    QSettings settings(iniPath_, QSettings::IniFormat);
    settings.beginGroup(namedGroup);
    QList<NamedCondition> conditions;
    const QStringList keys = settings.childKeys();
    for (const QString& key : keys) {
        conditions << NamedCondition{nameOfKey(key), settings.value(key).toString()};
    }
    return conditions;
}

void KeptConditions::keep(const NamedCondition& condition) {
    write(keyOf(condition.name), condition.text);
}

void KeptConditions::remove(const QString& name) {
    const Activity activity(u"删除搜索条件"_s);
    QSettings settings(iniPath_, QSettings::IniFormat);
    settings.remove(keyOf(name));
    requireWritten(settings);
}

void KeptConditions::write(const QString& key, const QString& text) {
    const Activity activity(u"保存搜索条件"_s);
    QSettings settings(iniPath_, QSettings::IniFormat);
    settings.setValue(key, text);
    requireWritten(settings);
}

}  // namespace guanchao
