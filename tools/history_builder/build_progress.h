// How far a build is, in a line on the error output now and then: rows, share, time left.
#pragma once

#include <QElapsedTimer>

namespace guanchao {

class BuildProgress {
public:
    BuildProgress() { began_.start(); }

    void tookRow() { ++rows_; }
    void show(qint64 bytes, qint64 ofBytes);

private:
    qint64 rows_ = 0;
    QElapsedTimer began_;
    QElapsedTimer lastShown_;
};

}  // namespace guanchao
