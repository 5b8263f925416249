// The commands of the main window's two popups that change a theme or one stock of it: tables
// dzhzhuti, zhutidapanhq, zhutijiankong and zhutiriji of the main store, xinwenshul of the heat
// store. Each asks and answers through Dialogs itself and tells what the main window must show
// anew. What they write can be taken back by Edits. Failed statements raise StoreError; a new name
// is a transaction a table, everything else one.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/edits.h"
#include "store/stores.h"

namespace guanchao {

// Of what the main window can take back.
inline const QString mainWindowPlace = QStringLiteral("主窗口");

enum class Redraw : std::uint8_t {
    none,
    themes,  // 刷新
    stocks   // the stock grid of the theme
};

class ThemeCommands {
public:
    ThemeCommands(const Stores& stores, const Clock& clock, Dialogs& dialogs, Removals& removals,
                  Edits& edits);

    // 为该主题添加个股
    QCoro::Task<Redraw> addStock(QString theme, std::stop_token stop);
    // 为该主题删除个股
    Redraw removeStock(const QString& theme, const QString& code);
    // 修改主题相关度
    QCoro::Task<Redraw> changeRelevance(QString theme, QString code, std::stop_token stop);

    // 删除主题
    QCoro::Task<Redraw> removeTheme(QString theme, std::stop_token stop);
    // 修改关注度
    QCoro::Task<Redraw> changeAttention(QString theme, std::stop_token stop);

    // 修改名称: a name in use merges the two themes. A failure keeps the tables renamed before it
    // and tells which they are.
    QCoro::Task<Redraw> rename(QString theme, std::stop_token stop);

    // 全删指定只数的主题: of the themes as the grid shows them after the questions, by the counts
    // that it shows. The grid outlives the run.
    QCoro::Task<Redraw> removeSmallThemes(const ResultGrid& themes, std::stop_token stop);

private:
    // A whole number from 1 to `most`; nothing, and a word to the user, for any other.
    QCoro::Task<std::optional<qint16>> askNumber(QString question, QString title, QString offered,
                                                 int most, std::stop_token stop);
    // The themes go in one transaction, and can be taken back under the name.
    void removeThemes(const QStringList& themes, const QString& words, const QString& name);
    void renameInAllTables(const QString& theme, const QString& name);

    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
    Removals& removals_;
    Edits& edits_;
};

}  // namespace guanchao
