// Form36, "K线图": the days of one stock as candles. Table dmb, for the candidates and the name;
// the history databases and the day-history services. Opened from a row of a list it goes through
// the stocks of that list. Its load takes dangqiandm and dangqianjc over.
#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/picker_box.h"
#include "grid/stock_rows.h"

namespace Ui {
class Form36;
}

namespace guanchao {

class Form36 : public QDialog {
    Q_OBJECT

public:
    Form36(Environment& environment, Windows& windows);
    ~Form36() override;

    // Shows the chosen one of these stocks, around the day of its row; PageUp and PageDown lead to
    // those beside it.
    void walkThrough(const QList<StockOfRow>& stocks, qsizetype chosen);

public slots:
    // Esc ends a reading before it closes the window.
    void reject() override;

protected:
    // Every other way closes it at once.
    void closeEvent(QCloseEvent* event) override { event->accept(); }

private:
    void connectControls();
    void Command1_Click();
    void step(qsizetype by);
    void showStock(const StockOfRow& stock);
    QCoro::Task<> showName(QString dm, std::stop_token stop);

    Environment& environment_;
    std::unique_ptr<Ui::Form36> ui_;
    PickerBox* picker_ = nullptr;
    QList<StockOfRow> stocks_;
    qsizetype at_ = 0;
    Runs runs_;
};

}  // namespace guanchao
