#include "themes/stock_themes.h"

#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/membership.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

StockThemes::StockThemes(const Stores& stores, Globals& globals, const Clock& clock,
                         Dialogs& dialogs, Edits& edits, ResultGrid& grid)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      dialogs_(dialogs),
      edits_(edits),
      grid_(grid) {}

void StockThemes::load(const std::function<void(const Stock&)>& showStock) {
    const Activity activity(u"读取所属主题"_s);
    Connection store = stores_.main.open();
    const QString code = std::exchange(globals_.dangqiandm, QString()).toUpper();
    const QString handedOver = std::exchange(globals_.dangqianjc, QString());
    const QString jc =
        handedOver.isEmpty() ? shortName(store, code).value_or(QString()) : handedOver;
    showStock({jc.left(4) + u"_属于主题"_s, code, jc});
    listed_ = code;
    fill(store);
}

void StockThemes::readAgain() {
    const Activity activity(u"读取所属主题"_s);
    Connection store = stores_.main.open();
    grid_.setRows(1);
    fill(store);
}

void StockThemes::fill(Connection& store) {
    Recordset themes(store, u"select  dm as 代码,zhutiname as 主题简称  FROM dzhzhuti where dm="_s +
                                quoted(listed_));
    if (themes.count() == 0) {
        return;
    }
    const GridFill fill(grid_);
    grid_.clear();
    tianchongbiao(themes, grid_, 1);
    grid_.setColWidths({600, 1000, 1400});
    grid_.setColFont(1, {u"新宋体"_s, 12});
    for (int row = 1; row < grid_.rows(); ++row) {
        grid_.setCellForeColor(row, 0, textColour);
        grid_.setCellForeColor(row, 1, themeColour);
    }
    grid_.setRow(1);
    grid_.setCol(0);
}

std::optional<QString> StockThemes::find(const QString& typed) {
    const Activity activity(u"查找所属主题"_s);
    const QString code = trimBlanks(typed).toUpper();
    {
        Connection store = stores_.main.open();
        const Recordset themes(
            store, u"select  dm,jc,zhutiname   FROM dzhzhuti where dm="_s + quoted(code));
        if (themes.count() > 0) {
            globals_.dangqiandm = code;
            globals_.dangqianjc = themes.value(u"jc").toText();
            return globals_.dangqianjc;
        }
    }
    dialogs_.tell(u" 此代码没有找到主题!"_s);
    return std::nullopt;
}

QCoro::Task<bool> StockThemes::joinAnother(std::stop_token stop) {
    // While the question stands, another row or another window may change the shared one.
    const QString code = globals_.dangqiandm;
    const QString typed =
        co_await dialogs_.input(stop, u"请输入主题名称："_s, u"添加到主题"_s, QString());
    const QString theme = trimBlanks(typed);
    if (theme.isEmpty()) {
        co_return false;
    }
    const Activity activity(u"添加到主题"_s);
    Connection store = stores_.main.open();
    if (isMember(store, theme, code)) {
        dialogs_.tell(u"已加入过该主题!"_s);
        co_return false;
    }
    const std::optional<QString> jc = shortName(store, code);
    if (!jc) {
        throw OperationError(u"代码表里没有 "_s + code);
    }
    EditInHand edit(edits_, {u"添加个股 "_s + theme + u' ' + *jc});
    edit.write(store, stores_.main, {membershipOf(theme, code)}, [&] {
        joinTheme(store, {theme, code, *jc, timeText(clock_.now().date())});
    });
    dialogs_.tell(u"添加到主题完成!"_s);
    co_return true;
}

void StockThemes::leave() {
    const Activity activity(u"从主题删除"_s);
    {
        Connection store = stores_.main.open();
        const QString theme = globals_.dangqianjc;
        const QString code = globals_.dangqiandm;
        EditInHand edit(edits_,
                        {u"删除个股 "_s + theme + u' ' + shortName(store, code).value_or(code)});
        edit.write(store, stores_.main, {membershipOf(theme, code)},
                   [&] { leaveTheme(store, theme, code); });
    }
    dialogs_.tell(u"从该主题删除完成!"_s);
}

}  // namespace guanchao
