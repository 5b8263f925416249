// The search of Form12 over the selected theme-days: tables xuanticai and xuanticaigu of the main
// store. A free condition in SQL and fixed filters choose rows, a score tells how a stock chosen so
// would have gained. Gains are percent. A condition that the store refuses raises RefusedCondition,
// and grid and score stay as they were.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <functional>
#include <optional>
#include <stop_token>

#include "base/date_trio.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/shell.h"
#include "research/selection_query.h"
#include "research/selection_score.h"
#include "store/stores.h"

namespace guanchao {

// The dates that the boxes show at first: today, and the same day of the next month, which in
// December is the 13th and packs as January.
DateTexts firstDate(QDate today);
DateTexts lastDate(QDate today);

// ... (Command5): opens the summary that the user keeps in the application folder. Raises
// OperationError if there is none.
void openSummary(const QString& folder, Shell& shell);

struct PressedRow {
    QString code;
    QString theme;
};

class SelectionSearch {
public:
    SelectionSearch(const Stores& stores, Globals& globals, ResultGrid& grid);

    // 搜索 (Command2): reads in a thread of its own and shows the first rows while it reads on;
    // gives the score once the grid holds all. `written` is what the operation that searches anew
    // has written and a failure leaves.
    using FirstRowsShown = std::function<void()>;
    QCoro::Task<SelectionScore> search(SelectionQuery query, QString written,
                                       FirstRowsShown firstRowsShown, std::stop_token stop);

    // A press on a row of a result hands its stock and its last cell over (dangqiandm,
    // dangqianjilu: 0 for a cell that is no whole number of 32 bits); nothing if it is none.
    std::optional<PressedRow> press(int row);

private:
    const Stores& stores_;
    Globals& globals_;
    ResultGrid& grid_;
};

}  // namespace guanchao
