#include "frame/run_share.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void showShare(QProgressBar& bar, int done, int total, const QString& timeLeft) {
    bar.setMaximum(total);
    bar.setValue(done);
    bar.setFormat(timeLeft.isEmpty() ? u"%p%"_s : u"%p%  "_s + timeLeft);
}

}  // namespace guanchao
