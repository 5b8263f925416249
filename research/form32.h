// Form32, "历史行情": what the history databases hold of each code, and their fill, which goes on
// behind the closed window. The rules are in HistoryState, HistoryFill and HistoryDesk.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/run_panel.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "research/history_library.h"
#include "research/history_state.h"

namespace Ui {
class Form32;
}

namespace guanchao {

class Form32 : public QDialog {
    Q_OBJECT

public:
    Form32(Environment& environment, Windows& windows);
    ~Form32() override;

private:
    struct Held {
        QList<HistoryCode> codes;
        HistoryState state;
    };

    void connectControls();
    void showFill();
    void showHint();
    void showServices();
    void readAnew();
    QCoro::Task<> readHeld(std::stop_token stop);
    void showHeld(const Held& held);
    void fillRow(int row, const HistoryCode& code, const StoredDays& stored);
    static QString summaryOf(const Held& held);

    Environment& environment_;
    std::unique_ptr<Ui::Form32> ui_;
    std::unique_ptr<RunPanel> panel_;
    ResultGrid grid_;
    bool reading_ = false;
    Runs runs_;
};

}  // namespace guanchao
