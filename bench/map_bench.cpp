// The map of all themes on a whole screen after new quotes: laid out, named and painted.
#include "themes/map_view.h"

#include <random>

#include "bench/compare.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int allThemes = 600;
constexpr double longestPaintMs = 30;

QList<MapBox> randomThemes() {
    std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same in every run
    std::normal_distribution<double> gain(0, 1.5);
    std::lognormal_distribution<double> turnover(22, 1.2);
    QList<MapBox> themes;
    for (int at = 0; at < allThemes; ++at) {
        const QString name =
            u"人工智能新能源汽车"_s.sliced(at % 6, 2 + at % 3) + QString::number(at);
        themes << MapBox{.key = name,
                         .name = name,
                         .gain = gain(random),
                         .members = 3 + at % 97,
                         .turnover = turnover(random),
                         .attention = 1.0 + at % 20};
    }
    return themes;
}

void themeMap(benchmark::State& state) {
    MapView map;
    map.resize(1920, 1080);
    map.setArea(MapArea::turnover);
    QImage picture(map.size(), QImage::Format_RGB32);
    const QList<MapBox> themes = randomThemes();
    measure(state, [&] {
        map.showBoxes(themes, {});
        map.render(&picture);
    });
    state.counters["limit_ms"] = longestPaintMs;
    state.counters["ratio"] = state.counters["program_ms"].value / longestPaintMs;
}
BENCHMARK(themeMap)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

}  // namespace

}  // namespace guanchao
