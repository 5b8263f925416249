#include "frame/undo_line.h"

#include <QEvent>
#include <QScopeGuard>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestWords = 30;  // beside the button, in a window as narrow as it goes

}  // namespace

UndoLine::UndoLine(QLabel& words, QPushButton& button, Environment& environment, QString place,
                   std::function<void()> cameBack)
    : words_(words),
      button_(button),
      removals_(environment.removals),
      place_(std::move(place)),
      cameBack_(std::move(cameBack)),
      runs_(environment.failures) {
    connect(&button_, &QPushButton::clicked, this,
            [this] { runs_.start([this](std::stop_token stop) { return undo(stop); }); });
    words_.window()->installEventFilter(this);
    showLast();
}

bool UndoLine::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        showLast();
    }
    return QObject::eventFilter(watched, event);
}

void UndoLine::showLast() {
    const std::optional<RemovedRows> last = removals_.last(place_);
    words_.setText(last ? u"已删除："_s + shortened(last->words, longestWords) : QString());
    words_.setVisible(last.has_value());
    button_.setVisible(last.has_value());
}

QCoro::Task<> UndoLine::undo(std::stop_token stop) {
    const std::optional<RemovedRows> last = removals_.last(place_);
    if (!last) {
        co_return;
    }
    button_.setEnabled(false);
    const auto again = qScopeGuard([this] { button_.setEnabled(true); });
    const auto job = [rows = *last](const auto&) {
        const Activity activity(u"撤消删除"_s);
        bringBack(rows);
        return true;
    };
    co_await inWorker(job, stop);
    removals_.forget(*last);
    showLast();
    cameBack_();
}

}  // namespace guanchao
