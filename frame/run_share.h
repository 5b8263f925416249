// A bar that tells how much of a run is done and how long it still takes.
#pragma once

#include <QProgressBar>

namespace guanchao {

// Of a total that is not known yet it shows that something is being done.
void showShare(QProgressBar& bar, int done, int total, const QString& timeLeft);

}  // namespace guanchao
