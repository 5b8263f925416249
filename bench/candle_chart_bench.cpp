// Ten years of days as candles with their volume and means: painting them all, and a turn of the
// wheel with its painting.
#include "frame/candle_chart.h"

#include <QWheelEvent>
#include <random>

#include "bench/compare.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype tenYears = 2500;
constexpr double longestPaintMs = 16;  // sixty pictures a second

QList<Candle> randomDays() {
    std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same days in every run
    std::normal_distribution<double> gain(0, 0.02);
    QList<Candle> days;
    QDate day(2016, 7, 1);
    double price = 10;
    for (; days.size() < tenYears; day = day.addDays(1)) {
        if (day.dayOfWeek() <= Qt::Friday) {
            const double open = price;
            price *= 1 + gain(random);
            days << Candle{day,
                           open,
                           std::max(open, price) * 1.01,
                           std::min(open, price) * 0.99,
                           price,
                           1e7 * std::exp(10 * gain(random)),
                           1e8};
        }
    }
    return days;
}

class Chart : public CandleChart {
public:
    Chart() {
        resize(1200, 700);
        showBars(randomDays());
    }

    void turnWheel(int steps) {
        QWheelEvent turn({600, 300}, {600, 300}, {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        wheelEvent(&turn);
    }
    void paint() { render(&picture_); }

private:
    QImage picture_{1200, 700, QImage::Format_RGB32};
};

void measureAgainstPaint(benchmark::State& state, const std::function<void()>& program) {
    measure(state, program);
    state.counters["limit_ms"] = longestPaintMs;
    state.counters["ratio"] = state.counters["program_ms"].value / longestPaintMs;
}

void candleChart(benchmark::State& state) {
    Chart chart;
    chart.turnWheel(-1);
    while (chart.sight().count() < tenYears) {
        chart.turnWheel(-1);
    }
    measureAgainstPaint(state, [&] { chart.paint(); });
}
BENCHMARK(candleChart)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void candleChartWheel(benchmark::State& state) {
    Chart chart;
    int turns = 0;
    measureAgainstPaint(state, [&] {
        chart.turnWheel(++turns / 14 % 2 == 0 ? -1 : 1);
        chart.paint();
    });
}
BENCHMARK(candleChartWheel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(56);

}  // namespace

}  // namespace guanchao
