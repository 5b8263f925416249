// Form24, "主题历史涨幅与大盘对比": a theme against the market over a range of days, as a table and
// as a plot. Tables dzhzhuti, geguhq and zhutidapanhq of the main store; the rules are in
// ThemeHistory and DayCache. Its load takes dangqianzhuti over.
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
    void showRun(bool running);
    void showStep(const ThemeHistoryStep& step);

    Environment& environment_;
    std::unique_ptr<Ui::Form24> ui_;
    ResultGrid grid_;
    DateBoxes* first_ = nullptr;
    DateBoxes* last_ = nullptr;
    Runs runs_;
};

}  // namespace guanchao
