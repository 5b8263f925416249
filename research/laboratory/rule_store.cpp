#include "research/laboratory/rule_store.h"

#include <QSettings>
#include <algorithm>
#include <cmath>

#include "base/activity.h"
#include "base/values.h"
#include "research/named_settings.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString rulesGroup = u"规则/"_s;
const QString lastGroup = u"上次"_s;

QString groupOf(const QString& name) {
    return rulesGroup + keyOfName(name);
}

}  // namespace

RuleStore::RuleStore(const QString& applicationFolder) : path_(applicationFolder + u"回测.ini"_s) {}

QStringList RuleStore::names() const {
    QSettings settings(path_, QSettings::IniFormat);
    settings.beginGroup(rulesGroup);
    QStringList names;
    for (const QString& group : settings.childGroups()) {
        names << nameOfKey(group);
    }
    names.sort();
    return names;
}

BacktestRule RuleStore::rule(const QString& name) const {
    return read(groupOf(name));
}

BacktestRule RuleStore::last() const {
    return read(lastGroup);
}

BacktestRule RuleStore::read(const QString& group) const {
    QSettings settings(path_, QSettings::IniFormat);
    settings.beginGroup(group);
    BacktestRule rule;
    for (const RuleField& field : ruleFields()) {
        bool isNumber = false;
        const double kept = settings.value(field.words).toDouble(&isNumber);
        if (isNumber && std::isfinite(kept)) {
            rule.*field.value = std::clamp(roundTo(kept, field.decimals), field.least, field.most);
        }
    }
    return rule;
}

void RuleStore::keep(const QString& name, const BacktestRule& rule) {
    write(groupOf(name), rule);
}

void RuleStore::keepLast(const BacktestRule& rule) {
    if (rule != last()) {
        write(lastGroup, rule);
    }
}

void RuleStore::write(const QString& group, const BacktestRule& rule) {
    const Activity activity(u"保存回测规则"_s);
    QSettings settings(path_, QSettings::IniFormat);
    settings.beginGroup(group);
    for (const RuleField& field : ruleFields()) {
        settings.setValue(field.words, rule.*field.value);
    }
    requireWritten(settings);
}

void RuleStore::remove(const QString& name) {
    const Activity activity(u"删除回测规则"_s);
    QSettings settings(path_, QSettings::IniFormat);
    settings.remove(groupOf(name));
    requireWritten(settings);
}

}  // namespace guanchao
