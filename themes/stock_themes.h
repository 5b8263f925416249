// The themes of one stock, as Form22 lists and changes them: table dzhzhuti, names from the code
// table dmb. The values that windows share (dangqiandm, dangqianjc) carry code and short name in,
// and from then on the code and the theme of the pressed row. What is written can be taken back by
// Edits. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/edits.h"
#include "store/stores.h"

namespace guanchao {

class StockThemes {
public:
    StockThemes(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                Edits& edits, ResultGrid& grid);

    struct Stock {
        QString caption;
        QString code;
        QString jc;  // of the code table where no name was handed over
    };

    // Takes the shared values over, empties them, shows the stock and fills the grid; with no row
    // the grid stays.
    void load(const std::function<void(const Stock&)>& showStock);

    // Fills the grid with the themes of the same stock as they are now.
    void readAgain();

    // Makes the typed stock the shared one, for the next load. Returns its short name, or nothing
    // and a word to the user if it is in no theme.
    std::optional<QString> find(const QString& typed);

    // 添加到主题, for the stock of the pressed row; true if it has joined one. A code that the code
    // table lacks raises OperationError.
    QCoro::Task<bool> joinAnother(std::stop_token stop);

    // 从该主题删除, for the stock and the theme of the pressed row.
    void leave();

private:
    void fill(Connection& store);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    Edits& edits_;
    ResultGrid& grid_;
    QString listed_;  // code
};

}  // namespace guanchao
