#include "market/f10_page.h"

#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString addressTemplate(const Stores& stores) {
    Connection connection = stores.main.open();
    const Recordset row(connection, u"select id,f10url from tempcanshu"_s);
    return row.atEnd() ? QString() : row.value(u"f10url").toText();
}

// Up to the first slash behind the scheme, the slash included.
QString hostOf(const QString& address) {
    const qsizetype scheme = address.indexOf(u"//"_s);
    const qsizetype slash = address.indexOf(u'/', scheme < 0 ? 0 : scheme + 2);
    return slash < 0 ? address + u'/' : address.first(slash + 1);
}

}  // namespace

std::optional<F10Page> takeF10Page(const Stores& stores, Globals& globals, Dialogs& dialogs) {
    const Activity activity(u"打开F10资料"_s);
    QString dm = trimBlanks(std::exchange(globals.dangqiandm, {}));
    const QString jc = trimBlanks(std::exchange(globals.dangqianjc, {}));
    if (dm.isEmpty()) {
        dm = u"SH600000"_s;
    }
    const QString number = dm.right(codeDigits);
    const QString address = addressTemplate(stores).replace(u"600000"_s, number);
    if (!address.startsWith(u"http"_s)) {
        dialogs.tell(u"没有找到该股F10资料。"_s);
        return std::nullopt;
    }
    return F10Page{hostOf(address) + number + u'/', jc + u'(' + dm + u")-----F10资料"_s};
}

QString openingWords(const F10Page& page) {
    return u"正在打开 "_s + page.address;
}

QString outsideWords(const F10Page& page) {
    return u"内置浏览器不可用，请在系统的浏览器中查看：\n\n"_s + page.address;
}

QString notLoadedWords(const F10Page& page) {
    return u"网页打不开，请检查网络连接：\n\n"_s + page.address;
}

}  // namespace guanchao
