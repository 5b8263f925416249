// Form37, "回测实验室": a rule in fields, what a capital would have become by it, rules side by
// side and swept over their values. Both history databases, yejiyuyuejinqi and dmb of the main
// store, 回测.ini; the rules are in Laboratory and RuleStore.
#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/grid_export.h"
#include "grid/result_grid.h"
#include "research/laboratory/laboratory.h"
#include "research/laboratory/rule_store.h"

namespace Ui {
class Form37;
}

namespace guanchao {

class Form37 : public QDialog {
    Q_OBJECT

public:
    Form37(Environment& environment, Windows& windows);
    ~Form37() override;

    // The rule that buys behind the days on which reports were announced, ready to be run.
    void showReportDates();

public slots:
    // Esc ends a run before it closes the window.
    void reject() override;

protected:
    // Every other way closes it at once.
    void closeEvent(QCloseEvent* event) override { event->accept(); }

private:
    void setUpGrids();
    void connectControls();
    void showRules(const QString& chosen);
    void showRule();
    QString chosenRule() const;
    QCoro::Task<> keepRule(std::stop_token stop);
    QCoro::Task<> removeRule(std::stop_token stop);
    BacktestRule ruleToRun();
    QCoro::Task<> test(std::stop_token stop);
    QCoro::Task<> compare(std::stop_token stop);
    QCoro::Task<> sweep(std::stop_token stop);
    void showResult(const BacktestResult& result);
    void showSweptValues();
    void takeSwept(int row);
    void chooseTrade(int row);
    QCoro::Task<> showChart(QString dm, QDate day, std::stop_token stop);
    void showRun(const ResearchProgress& progress);

    Environment& environment_;
    std::unique_ptr<Ui::Form37> ui_;
    RuleStore rules_;
    ResearchRun run_;
    Laboratory laboratory_;
    ResultGrid years_, trades_, returns_, comparison_, heat_;
    ResultGrid curve_;   // to be exported
    QList<Trade> done_;  // those that are shown
    std::optional<SweepResult> swept_;
    GridExport curveExport_;
    Runs charts_;
    Runs runs_;
};

}  // namespace guanchao
