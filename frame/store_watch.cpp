#include "frame/store_watch.h"

#include <QEvent>
#include <utility>

#include "store/store_error.h"

namespace guanchao {

StoreWatch::StoreWatch(QWidget& window, StoreFile store, Failures& failures, Read read)
    : QObject(&window),
      window_(window),
      store_(std::move(store)),
      read_(std::move(read)),
      runs_(failures) {
    looks_.setInterval(betweenStoreLooks);
    connect(&looks_, &QTimer::timeout, this, &StoreWatch::look);
    window.installEventFilter(this);
}

bool StoreWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        looks_.start();
        look();
    } else if (event->type() == QEvent::Hide) {
        looks_.stop();
    }
    return QObject::eventFilter(watched, event);
}

void StoreWatch::readAnew() {
    runs_.stop();
    seen_ = {};
    look();
}

// The stamp is of before the reading: what is written meanwhile is found by the next look.
void StoreWatch::look() {
    const FileStamp now = stampOf(store_);
    if (now == seen_ || runs_.running() || !window_.isVisible() || window_.isMinimized()) {
        return;
    }
    seen_ = now;
    runs_.start([this](std::stop_token stop) { return readOnce(stop); });
}

// A store that another holds is read at the next look. What else fails may fail at each of them.
QCoro::Task<> StoreWatch::readOnce(std::stop_token stop) {
    try {
        co_await read_(stop);
        hasFailed_ = false;
    } catch (const StoreError& failure) {
        if (failure.fault() == StoreFault::busy) {
            seen_ = {};
        } else if (!std::exchange(hasFailed_, true)) {
            throw;
        }
    }
}

}  // namespace guanchao
