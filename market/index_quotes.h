// The two index panels of the stock quote window as they are read: the chosen domestic index with
// its turnover and ratio, the chosen outside one, and their charts.
#pragma once

#include <QList>

#include "base/globals.h"
#include "market/mean_volume.h"
#include "market/quote_desk.h"
#include "market/readings.h"

namespace guanchao {

class IndexQuotes {
public:
    IndexQuotes(QuoteDesk& desk, MeanVolume& meanVolume, const Globals& globals,
                QuoteScreen& screen)
        : desk_(desk), meanVolume_(meanVolume), globals_(globals), screen_(screen) {}

    // By their places in the selectors; another one clears its panel.
    void chooseHome(int index);
    void chooseWorld(int index);

    // All of the panel: the index and its chart.
    QList<Reading> home();
    QList<Reading> world();

    // What a poll reads: the index with the mean that is known, an outside index, and the chart.
    Reading homePoll();
    Reading worldIndex();
    QCoro::Task<> showHomeChart(std::stop_token stop);

private:
    struct ReadIndex {
        HomeIndex index;
        HomeIndexPanel panel;
        QuoteRow fields;
    };

    const HomeIndex& chosenHome() const { return homeIndexes[static_cast<size_t>(home_)]; }
    const WorldIndex& chosenWorld() const { return worldIndexes[static_cast<size_t>(world_)]; }
    QCoro::Task<> takeHome(std::stop_token stop);
    QCoro::Task<> pollHome(std::stop_token stop);
    QCoro::Task<std::optional<ReadIndex>> fetchHome(std::stop_token stop);
    QCoro::Task<> fetchWorld(std::stop_token stop);
    QCoro::Task<> showWorldChart(std::stop_token stop);
    void showRatio(ReadIndex read);

    QuoteDesk& desk_;
    MeanVolume& meanVolume_;
    const Globals& globals_;
    QuoteScreen& screen_;
    int home_ = 0;
    int world_ = 0;
    double mean_ = 0;  // of the domestic index
};

}  // namespace guanchao
