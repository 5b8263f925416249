// Form12, "题材选股": the scans of the day history, the search over what they have chosen, with its
// score, and the edits of earnings forecasts. Tables xuanticai, xuanticaigu, yejiyuyuejinqi and
// yejiyugao of the main store, both history databases; the rules are in SelectionSearch,
// SelectionScan, ForwardReturns and EarningsForecast.
#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/date_boxes.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "research/earnings_forecast.h"
#include "research/forward_returns.h"
#include "research/kept_conditions.h"
#include "research/refused_condition.h"
#include "research/score_panel.h"
#include "research/selection_scan.h"
#include "research/selection_search.h"
#include "store/store_error.h"

namespace Ui {
class Form12;
}

namespace guanchao {

class Form12 : public QDialog {
    Q_OBJECT

public:
    Form12(Environment& environment, Windows& windows);
    ~Form12() override;

public slots:
    // Esc: ends a run or a search first, then the window.
    void reject() override;

protected:
    // Every other way closes it at once.
    void closeEvent(QCloseEvent* event) override { event->accept(); }

private:
    void connectControls();
    void connectRuns();
    SelectionQuery query() const;
    QCoro::Task<> search(QString written, std::stop_token stop);
    void showRefused(const TextPart& part);
    QCoro::Task<> takeReturns(std::stop_token stop);
    QCoro::Task<> offerLaboratory(QString refusal, std::stop_token stop);
    void stop();
    void enableControls();
    void showRun(const ResearchProgress& progress);

    void Form_Load();
    void Command2_Click();
    void Command5_Click();
    void Command6_Click();
    void MSHFlexGrid1_RowChosen(int row);
    void MSHFlexGrid1_DblClick();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form12> ui_;
    QString caption_;  // while no run tells its own
    ResultGrid grid_;
    SelectionSearch search_;
    KeptConditions conditions_;
    ScorePanel* figures_;
    EarningsForecast forecast_;
    int searching_ = 0;  // an edit may search beside a search
    ResearchRun run_;
    SelectionScan scan_;
    ForwardReturns returns_;
    DateBoxes* first_ = nullptr;
    DateBoxes* last_ = nullptr;
    QMenu kuaimenu_;  // 快捷菜单: on a row
    Runs searches_;   // and edits, which search anew
    Runs runs_;
};

}  // namespace guanchao
