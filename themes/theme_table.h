// The two tables of the main window: the themes with their mean gain, and the members of one theme
// or all stocks. Everything is read from the main store at the moment of the query; nothing here
// goes to the network. Failed statements raise StoreError.
#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

// 全部: in place of a theme's name it stands for all stocks.
inline const QString allStocks = QStringLiteral("全部");

// The texts of the two time labels.
struct UpdateLabels {
    QString themes;  // 主题库更新时间
    QString quotes;  // 行情更新时间
};

class ThemeTable {
public:
    ThemeTable(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
               ResultGrid& themes, ResultGrid& stocks);

    // 刷新: fills the theme table with the themes of more attention than the typed threshold, and
    // sets the session flags from the clock. The labels are shown first, unless the store has no
    // row of times.
    using ShowLabels = std::function<void(const UpdateLabels&)>;
    void refresh(const QString& threshold, const ShowLabels& showLabels);

    // How many themes there are to list, whatever their attention.
    int themeCount() const;

    // 显示主题股: the members of the theme with their quotes, or all stocks.
    void xianshizhutigu(const QString& theme);

    // As refresh, for quotes that have come by themselves: where the themes are those of a search,
    // that is carried out again instead.
    void refreshShown(const QString& threshold, const ShowLabels& showLabels);

    // Fills the stocks that were shown last with the quotes of now; says nothing.
    void refreshStocks();

    // The themes that hold a stock whose code contains the text, and the stocks of the first.
    void searchByCode(const QString& code);

    // The themes whose name contains the text, and the stocks of the first.
    void searchByName(const QString& part);

private:
    struct Search {
        QString query;
        QList<int> widths;  // in twips
    };

    void readLabels(Connection& connection, const ShowLabels& showLabels);
    void fillThemes(Connection& connection, const QString& threshold, GridFill::Rows rows);
    bool fillStocks(QString theme);
    bool fillSearch(const Search& search);
    bool fillFound(Connection& connection, const Search& search, GridFill::Rows rows);
    void showFirstTheme(const QString& searched);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ResultGrid& themes_;
    ResultGrid& stocks_;
    std::optional<Search> search_;        // whose themes are shown
    std::optional<QString> shownStocks_;  // of which theme the stocks shown last are
};

}  // namespace guanchao
