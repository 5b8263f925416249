#include "frame/run_share.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

constexpr int edges = 16;  // beside the words

void showShare(QProgressBar& bar, int done, int total, const QString& timeLeft) {
    bar.setMaximum(total);
    bar.setValue(done);
    bar.setFormat(timeLeft.isEmpty() ? u"%p%"_s : u"%p%  "_s + timeLeft);
    const int needed = bar.fontMetrics().horizontalAdvance(bar.text()) + edges;
    if (bar.minimumWidth() < needed) {
        bar.setMaximumWidth(std::max(bar.maximumWidth(), needed));
        bar.setMinimumWidth(needed);
    }
}

}  // namespace guanchao
