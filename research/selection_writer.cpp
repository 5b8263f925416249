#include "research/selection_writer.h"

#include <utility>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The day as the research tables keep it.
QString riqiOf(const QString& day) {
    return day + u" 00:00:00"_s;
}

QString isOfDay(const QString& day) {
    return u"date(riqi)="_s + quoted(day);
}

}  // namespace

SelectionWriter::SelectionWriter(Connection& main, Activity& activity, bool writesHigh,
                                 bool replaces)
    : main_(main), activity_(activity), writesHigh_(writesHigh), replaces_(replaces) {}

// A history may tell a day twice: what it gave the first time stays.
void SelectionWriter::beginDay(const QString& day) {
    if (!replaces_ || days_.contains(day)) {
        return;
    }
    days_ << day;
    statements_ << u"delete from xuanticaigu where "_s + isOfDay(day) +
                       u" and ticai in (select ticai from xuanticai where "_s + isOfDay(day) + u')'
                << u"delete from xuanticai where "_s + isOfDay(day);
}

void SelectionWriter::addTheme(const QString& day, const ThemeRow& theme) {
    QStringList numbers;
    for (const double number : {theme.ticaizhang, theme.zhangtinshu, theme.yizishu, theme.zonggeshu,
                                theme.dapanzhang, theme.touguzhangfu}) {
        numbers << numberText(number);
    }
    statements_ << u"insert into xuanticai(riqi,ticai,ticaizhang,zhangtinshu,yizishu,zonggeshu,"
                   u"dapanzhang,touguzhangfu) values("_s +
                       quoted(riqiOf(day)) + u',' + quoted(theme.ticai) + u',' +
                       numbers.join(u',') + u")"_s;
}

void SelectionWriter::beginStocks(const QString& day, const QString& ticai) {
    const QString themeDay = u"ticai="_s + quoted(ticai) + u" and "_s + isOfDay(day);
    if (replaces_ && !replaced_.contains(themeDay)) {
        replaced_.insert(themeDay);
        statements_ << u"delete from xuanticaigu where "_s + themeDay;
    }
}

void SelectionWriter::addStock(const QString& day, const QString& ticai, const StockRow& stock) {
    statements_ << insertStatement(stock, riqiOf(day), ticai, writesHigh_);
}

void SelectionWriter::storeDay() {
    Transaction transaction(main_);
    const QStringList statements = std::exchange(statements_, {});
    for (const QString& statement : statements) {
        main_.execute(statement);
    }
    transaction.commit();
    if (!statements.isEmpty() && !std::exchange(wroteDay_, true)) {
        activity_.wrote(u"此前各日的结果"_s);
    }
}

void SelectionWriter::removeOthers() {
    if (!replaces_) {
        return;
    }
    if (!days_.isEmpty()) {
        statements_ << u"delete from xuanticai where date(riqi) is null or date(riqi) not in ("_s +
                           quotedList(days_) + u')';
    }
    if (!days_.isEmpty() || !replaced_.isEmpty()) {
        statements_ << u"delete from xuanticaigu where not exists (select 1 from xuanticai where"
                       u" date(xuanticai.riqi)=date(xuanticaigu.riqi) and"
                       u" xuanticai.ticai=xuanticaigu.ticai and"
                       u" date(xuanticai.riqi)>'2006-04-06')"_s;
    }
    storeDay();
}

}  // namespace guanchao
