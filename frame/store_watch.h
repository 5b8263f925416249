// Tells a window of what others write to a store: while the window shows, a look at the file now
// and then finds what has been written since the last one. Nothing happens while it is hidden.
#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>

#include "base/runs.h"
#include "store/file_stamp.h"

namespace guanchao {

inline constexpr std::chrono::milliseconds betweenStoreLooks(1000);

class StoreWatch : public QObject {
    Q_OBJECT

public:
    // Reads what is there and shows it. Runs one at a time, the first as soon as the window shows.
    // A failure is told once, until a reading succeeds.
    using Read = Runs::Job;

    StoreWatch(QWidget& window, StoreFile store, Failures& failures, Read read);

    void setInterval(std::chrono::milliseconds interval) { looks_.setInterval(interval); }

    // What is shown is of something else now: it is read at once if the window shows.
    void readAnew();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();
    QCoro::Task<> readOnce(std::stop_token stop);

    QWidget& window_;
    StoreFile store_;
    Read read_;
    FileStamp seen_;
    bool hasFailed_ = false;
    QTimer looks_;
    Runs runs_;
};

}  // namespace guanchao
