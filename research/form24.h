// Form24, "主题历史涨幅与大盘对比": a theme against the market over a range of days, as a table and
// as a plot with its members; the ranks of all themes and their weeks over what is stored in the
// main store or in the first history database. Tables dzhzhuti, geguhq and zhutidapanhq of the main
// store; the rules are in ThemeHistory, DayCache and rankThemes. Its load takes dangqianzhuti over.
#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/date_boxes.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "research/theme_history.h"

namespace Ui {
class Form24;
}

namespace guanchao {

class Form24 : public QDialog {
    Q_OBJECT

public:
    Form24(Environment& environment, Windows& windows);
    ~Form24() override;

public slots:
    // Esc ends a run before it closes the window.
    void reject() override;

protected:
    // Every other way closes it at once.
    void closeEvent(QCloseEvent* event) override { event->accept(); }

private:
    ThemeHistory newHistory();
    QCoro::Task<> compare(std::stop_token stop);
    QCoro::Task<> showStored(QString theme, std::stop_token stop);
    void showResult(const ThemeHistoryResult& result);
    QCoro::Task<> rank(std::stop_token stop);
    void startRanking();
    void tellOtherSource();
    void connectTables();
    bool hasHistory() const;
    void openTheme(const ResultGrid& grid, int row, int col);
    void showRun(bool running);
    void showStep(const ThemeHistoryStep& step);

    Environment& environment_;
    std::unique_ptr<Ui::Form24> ui_;
    ResultGrid grid_;
    ResultGrid ranks_;
    ResultGrid weeks_;
    bool isRanked_ = false;
    DateBoxes* first_ = nullptr;
    DateBoxes* last_ = nullptr;
    Runs runs_;
};

}  // namespace guanchao
