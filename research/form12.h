// Form12, "题材选股": the scans of the day history, the search over what they have chosen, with its
// score, and the edits of earnings forecasts. Tables xuanticai, xuanticaigu, yejiyuyuejinqi and
// yejiyugao of the main store, both history databases; the rules are in SelectionSearch,
// SelectionScan, ForwardReturns and EarningsForecast.
#pragma once

#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/date_boxes.h"
#include "frame/environment.h"
#include "frame/run_window.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "research/earnings_forecast.h"
#include "research/forward_returns.h"
#include "research/selection_scan.h"
#include "research/selection_search.h"

namespace Ui {
class Form12;
}

namespace guanchao {

class Form12 : public RunWindow {
    Q_OBJECT

public:
    Form12(Environment& environment, Windows& windows);
    ~Form12() override;

public slots:
    // Esc: ends a run first, then the window.
    void reject() override;

private:
    bool runs() const override { return run_.running(); }
    void cancelRun() override { run_.cancel(); }
    void connectControls();
    void connectRuns();
    SelectionQuery query() const;
    void showRun(const ResearchProgress& progress);

    void Form_Load();
    void Command2_Click();
    void Command5_Click();
    void Command6_Click();
    void MSHFlexGrid1_RowChosen(int row);
    void MSHFlexGrid1_DblClick();

    Environment& environment_;
    std::unique_ptr<Ui::Form12> ui_;
    QString caption_;  // while no run tells its own
    ResultGrid grid_;
    SelectionSearch search_;
    EarningsForecast forecast_;
    ResearchRun run_;
    SelectionScan scan_;
    ForwardReturns returns_;
    DateBoxes* first_ = nullptr;
    DateBoxes* last_ = nullptr;
    QMenu kuaimenu_;  // 快捷菜单: on a row
    Runs edits_;
};

}  // namespace guanchao
