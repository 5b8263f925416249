// One keystroke in the stock picker: the lookup and the filling of its list, for a text that very
// many stocks answer and for one that few do.
#include <QLineEdit>
#include <QListWidget>

#include "bench/compare.h"
#include "bench/market.h"
#include "grid/picker_box.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void keystroke(benchmark::State& state, const QString& text) {
    QWidget window;
    QLineEdit box(&window);
    QListWidget list(&window);
    PickerBox picker(box, list, wholeMarket().main, nullptr);
    window.show();
    measure(state, [&] {
        box.clear();
        box.setText(text);
    });
}
BENCHMARK_CAPTURE(keystroke, oneDigit, u"6"_s)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);
BENCHMARK_CAPTURE(keystroke, threeLetters, u"abc"_s)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);

}  // namespace

}  // namespace guanchao
