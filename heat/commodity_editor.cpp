#include "heat/commodity_editor.h"

#include "base/activity.h"
#include "base/values.h"
#include "heat/collector_contract.h"
#include "store/patience.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A new commodity stands as collected so many days ago.
constexpr int daysBefore = 2;

QString attentionText(const Commodity& typed) {
    return numberText(numericPrefix(typed.attention));
}

QString historyWords(const Stores& stores, const QString& name) {
    const Activity activity(u"删除商品"_s);
    Connection store = stores.heat.open();
    const Recordset days(store, u"select count(*) from shophq where shopname="_s + quoted(name));
    return u"（历史 "_s + days.value(0).toText() + u" 条）"_s;
}

}  // namespace

std::optional<Commodity> CommodityEditor::load() {
    const Activity activity(u"读取商品"_s);
    Connection store = stores_.heat.open();
    const std::optional<Commodity> commodity = stored(store, globals_.dangqianshangpin);
    globals_.dangqianshangpin.clear();
    return commodity;
}

std::optional<Commodity> CommodityEditor::stored(Connection& store, const QString& name) {
    const Recordset row(
        store,
        u"select shopname, aboutgegu, guanzhudu from shopname where shopname="_s + quoted(name));
    if (row.atEnd()) {
        return std::nullopt;
    }
    return Commodity{.name = row.value(u"shopname").toText(),
                     .stocks = row.value(u"aboutgegu").toText(),
                     .attention = row.value(u"guanzhudu").toText()};
}

void CommodityEditor::add(const Commodity& typed, const Show& show) {
    const QString name = trimBlanks(typed.name);
    if (const auto commodity = insertUnlessStored(name, typed)) {
        show(*commodity);
        dialogs_.tell(u"此商品已存在!'"_s + name + u"',请点击修改按钮!"_s);
    } else {
        dialogs_.tell(u"添加商品'"_s + name + u"'完成!"_s);
    }
}

std::optional<Commodity> CommodityEditor::insertUnlessStored(const QString& name,
                                                             const Commodity& typed) {
    const Activity activity(u"添加商品"_s);
    Connection store = stores_.heat.open();
    const std::optional<Commodity> commodity = stored(store, name);
    if (!commodity) {
        store.execute(
            u"insert into shopname(shopname, aboutgegu, guanzhudu,adddate,riqi) values("_s +
            quoted(name) + u',' + quoted(trimBlanks(typed.stocks)) + u',' + attentionText(typed) +
            u',' + quoted(timeText(globals_.jintian)) + u',' +
            quoted(timeText(globals_.jintian.addDays(-daysBefore))) + u")"_s);
    }
    return commodity;
}

void CommodityEditor::modify(const Commodity& typed) {
    const QString name = trimBlanks(typed.name);
    if (update(name, typed)) {
        dialogs_.tell(u"修改商品'"_s + name + u"'完成!"_s);
    } else {
        dialogs_.tell(u"没有找到商品'"_s + name + u"',请点击添加按钮!"_s);
    }
}

// False if there is none of the name.
bool CommodityEditor::update(const QString& name, const Commodity& typed) {
    const Activity activity(u"修改商品"_s);
    Connection store = stores_.heat.open();
    const Recordset row(store, u"select shopname from shopname where shopname="_s + quoted(name));
    if (row.atEnd()) {
        return false;
    }
    store.execute(u"update shopname set  aboutgegu="_s + quoted(trimBlanks(typed.stocks)) +
                  u", guanzhudu="_s + attentionText(typed) + u",adddate="_s +
                  quoted(timeText(globals_.jintian)) + u"  where shopname="_s + quoted(name));
    return true;
}

QString CommodityEditor::notCollectedWords(const QString& attention) const {
    const Activity activity(u"读取商品的采集设定"_s);
    const std::optional<CommoditySettings> settings = readCommoditySettings(stores_.heat);
    const double limit = settings ? numericPrefix(settings->attention) : 0;
    if (numericPrefix(attention) > limit) {
        return {};
    }
    return u"关注度不大于 %1 的商品不采集。要采集它，填大于 %1 的关注度，或者在商品价格监控里改小“只采集关注度大于”。"_s
        .arg(numberText(limit));
}

QCoro::Task<> CommodityEditor::remove(QString name, std::stop_token stop) {
    co_await deleteCommodity(stores_, dialogs_, removals_, trimBlanks(name), stop);
}

QCoro::Task<bool> deleteCommodity(const Stores& stores, Dialogs& dialogs, Removals& removals,
                                  QString name, std::stop_token stop) {
    const QString count = historyWords(stores, name);
    const bool agreed = co_await dialogs.ask(stop, u"确实要删除商品'"_s + name + u"'吗?"_s + count);
    if (!agreed) {
        co_return false;
    }
    const auto step = [=, &stores, &removals] {
        const Activity activity(u"删除商品"_s);
        Connection store = stores.heat.open();
        Removal removal(removals, store, stores.heat);
        Transaction transaction(store);
        const QString ofCommodity = u" where shopname="_s + quoted(name);
        removal.keep({u"shopname"_s, {u"shopname"_s}}, ofCommodity);
        removal.keep({u"shophq"_s, {u"shopname"_s, u"riqi"_s}}, ofCommodity);
        store.execute(u"delete from shopname"_s + ofCommodity);
        store.execute(u"delete from shophq"_s + ofCommodity);
        transaction.commit();
        removal.complete(commodityPlace, u"商品'"_s + name + u"'"_s + count);
    };
    co_await patiently(step, stop);
    dialogs.tell(u"删除商品'"_s + name + u"'完成!"_s);
    co_return true;
}

}  // namespace guanchao
