// The commands of the main window's two popups that change a theme or one stock of it: tables
// dzhzhuti, zhutidapanhq and zhutijiankong of the main store, xinwenshul of the heat store. Each
// asks and answers through Dialogs itself and tells what the main window must show anew. Failed
// statements raise StoreError; only the deletion of small themes is one transaction.
#pragma once

#include <QString>
#include <optional>

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

// Names and codes are taken by value: while a question stands, the values that windows share may
// change under it.
class ThemeCommands {
public:
    ThemeCommands(const Stores& stores, const Clock& clock, Dialogs& dialogs);

    Redraw addStock(QString theme);                       // 为该主题添加个股
    Redraw removeStock(QString theme, QString code);      // 为该主题删除个股
    Redraw changeRelevance(QString theme, QString code);  // 修改主题相关度

    Redraw removeTheme(QString theme);      // 删除主题
    Redraw changeAttention(QString theme);  // 修改关注度

    // 修改名称: a name in use merges the two themes. A failure keeps the tables renamed before it
    // and tells which they are.
    Redraw rename(QString theme);

    // 全删指定只数的主题: of the themes as the grid shows them, by the counts that it shows.
    Redraw removeSmallThemes(const ResultGrid& themes);

private:
    // A whole number from 1 to `most`; nothing, and a word to the user, for any other.
    std::optional<qint16> askNumber(const QString& question, const QString& title,
                                    const QString& offered, int most);

    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
};

}  // namespace guanchao
