#include "heat/commodity_editor.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A new commodity stands as collected so many days ago.
constexpr int daysBefore = 2;

QString attentionText(const Commodity& typed) {
    return numberText(numericPrefix(typed.attention));
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

QCoro::Task<> CommodityEditor::remove(QString name, std::stop_token stop) {
    co_await deleteCommodity(stores_, dialogs_, trimBlanks(name), stop);
}

QCoro::Task<bool> deleteCommodity(const Stores& stores, Dialogs& dialogs, QString name,
                                  std::stop_token stop) {
    const bool agreed = co_await dialogs.ask(stop, u"确实要删除商品'"_s + name + u"'吗?"_s);
    if (!agreed) {
        co_return false;
    }
    Activity activity(u"删除商品"_s);
    Connection store = stores.heat.open();
    store.execute(u"delete from shopname where shopname="_s + quoted(name));
    activity.wrote(u"商品清单"_s);
    store.execute(u"delete from shophq where shopname="_s + quoted(name));
    dialogs.tell(u"删除商品'"_s + name + u"'完成!"_s);
    co_return true;
}

}  // namespace guanchao
