// The candle chart of a stock with the choice of its adjustment and of how much is in sight, the
// source of its days, and what to do where they can't be had. The days are read once the panel is
// on the screen. Both choices are kept from run to run.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <memory>

#include "base/runs.h"
#include "frame/candle_chart.h"
#include "frame/environment.h"
#include "frame/kept_control.h"
#include "market/candle_source.h"

namespace guanchao {

class CandlePanel : public QWidget, public KeptControl {
    Q_OBJECT

public:
    explicit CandlePanel(QWidget* parent = nullptr);

    // Before its first stock.
    void serve(Environment& environment);

    // With its exchange, in upper case; the same again reads anew. Empty: no stock. The chart
    // stands around the day, if there is one, and else at its end.
    void showStock(const QString& dm, QDate around = {});

    CandleChart& chart() { return *chart_; }
    bool isReading() const { return runs_ && runs_->running(); }
    void stop();

    QVariantMap kept() const override;
    void showKept(const QVariantMap& kept) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildControls();
    void buildLayout();
    void startOrStop();
    void readIfShown();
    QCoro::Task<> read(QString dm, std::stop_token stop);
    void showReading(bool reading);
    void showReply(const CandleReply& reply);
    void showState(const QString& words);
    void showAdjustment();
    void showRange();

    CandleChart* chart_;
    QComboBox* adjustments_;
    QComboBox* ranges_;
    QPushButton* again_;
    QLabel* state_;
    Environment* environment_ = nullptr;
    QString dm_;
    QDate around_;
    bool toRead_ = false;  // once the panel is on the screen
    std::unique_ptr<Runs> runs_;
};

}  // namespace guanchao
