// The commands of the main window's two popups that change a theme or one stock of it: tables
// dzhzhuti, zhutidapanhq and zhutijiankong of the main store, xinwenshul of the heat store. Each
// asks and answers through Dialogs itself and tells what the main window must show anew. Failed
// statements raise StoreError; only the deletion of small themes is one transaction.
#pragma once

#include <QString>

#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

enum class Redraw : std::uint8_t {
    none,
    themes,  // 刷新
    stocks   // the stock grid of the theme
};

class ThemeCommands {
public:
    ThemeCommands(const Stores& stores, const Clock& clock, Dialogs& dialogs);

    Redraw addStock(const QString& theme);                              // 为该主题添加个股
    Redraw removeStock(const QString& theme, const QString& code);      // 为该主题删除个股
    Redraw changeRelevance(const QString& theme, const QString& code);  // 修改主题相关度

    Redraw removeTheme(const QString& theme);      // 删除主题
    Redraw changeAttention(const QString& theme);  // 修改关注度

    // 修改名称: a name in use merges the two themes. A failure keeps the tables renamed before it
    // and tells which they are.
    Redraw rename(const QString& theme);

    // 全删指定只数的主题: of the themes as the grid shows them, by the counts that it shows.
    Redraw removeSmallThemes(const ResultGrid& themes);

private:
    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
};

}  // namespace guanchao
