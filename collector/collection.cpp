#include "collector/collection.h"

#include <QScopeGuard>
#include <algorithm>

#include "heat/collector_contract.h"
#include "store/failure.h"
#include "store/patience.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// So often the end of the main program is looked for while no page is asked for.
constexpr std::chrono::milliseconds longestWait{1000};
constexpr std::chrono::milliseconds pausedWait{250};

QString stateText(RunState state) {
    switch (state) {
        case RunState::running:
            return u"正在采集"_s;
        case RunState::paused:
            return u"已暂停"_s;
        case RunState::finished:
            return u"采集完成"_s;
        case RunState::stopped:
            return u"采集已停止"_s;
        case RunState::unwanted:
            return u"主程序已退出，采集结束"_s;
        case RunState::hopeless:
            return u"接连没有读到网页，采集提前结束，请检查网络和搜索网址"_s;
    }
    return {};
}

// A store that can't be asked at the moment takes no order back.
bool isStillWanted(const StoreFile& heat) {
    const Connection::BusyTimeout shortest(blink);
    try {
        return isRunWanted(heat);
    } catch (const StoreError&) {
        return true;
    }
}

}  // namespace

Collection::Collection(Job& job, const StoreFile& heat, HttpClient& http, const Clock& clock,
                       const Pacing& pacing, Wait wait)
    : job_(job),
      heat_(heat),
      source_(job.source(http)),
      clock_(clock),
      pacing_(pacing),
      wait_(std::move(wait)) {}

void Collection::begin() {
    for (const Item& item : job_.items()) {
        queue_ << Pending{items_.size(), 0, {}};
        items_ << Progress{item, ItemState::waiting, {}};
    }
    if (items_.isEmpty()) {
        state_ = RunState::finished;
    }
}

QCoro::Task<> Collection::run(std::stop_token stop) {
    const auto end = qScopeGuard([this] { endIfUnfinished(); });
    while (!hasEnded()) {
        const std::chrono::milliseconds wait = co_await step(stop);
        if (!hasEnded()) {
            co_await wait_(wait, stop);
        }
    }
}

// How long to wait before the next one.
QCoro::Task<std::chrono::milliseconds> Collection::step(std::stop_token stop) {
    if (!current_) {
        endIfUnwanted();
    }
    if (state_ != RunState::running) {
        co_return pausedWait;
    }
    if (!current_ && !takeDueItem()) {
        co_return untilNextDue();
    }
    co_await askForPage(stop);
    co_return pacing_.beforePage();
}

void Collection::setPaused(bool paused) {
    if (!hasEnded()) {
        state_ = paused ? RunState::paused : RunState::running;
    }
}

void Collection::endIfUnwanted() {
    if (!hasEnded() && job_.endsWithMainProgram() && !isStillWanted(heat_)) {
        state_ = RunState::unwanted;
    }
}

void Collection::endIfUnfinished() {
    if (hasEnded()) {
        return;
    }
    state_ = RunState::stopped;
    if (current_) {
        show(ItemState::waiting);
        current_.reset();
    }
}

bool Collection::takeDueItem() {
    const QDateTime now = clock_.now();
    const auto due = std::ranges::find_if(queue_, [&](const Pending& pending) {
        return !pending.due.isValid() || pending.due <= now;
    });
    if (due == queue_.end()) {
        return false;
    }
    current_ = *due;
    queue_.erase(due);
    asked_ = {};
    request_.reset();
    show(ItemState::asking);
    return true;
}

std::chrono::milliseconds Collection::untilNextDue() const {
    const auto next = std::ranges::min_element(queue_, {}, &Pending::due);
    const std::chrono::milliseconds wait(clock_.now().msecsTo(next->due));
    return std::min(wait, longestWait);
}

QCoro::Task<> Collection::askForPage(std::stop_token stop) {
    try {
        co_await readPage(stop);
    } catch (const std::exception& failure) {
        fail(failureReason(failure));
    }
    if (!current_ && queue_.isEmpty() && !hasEnded()) {
        state_ = RunState::finished;
    }
}

// A request that was decided when the page before came stands: by now the job might want none.
QCoro::Task<> Collection::readPage(std::stop_token stop) {
    if (!request_) {
        request_ = job_.nextRequest(items_[current_->item].item, asked_);
    }
    const QString request = request_.value();
    const Page page = co_await source_->get(asked_.way, request, stop);
    if (!page.lack.isEmpty()) {
        failPage(u"网页没有读到："_s + page.lack);
        co_return;
    }
    const QString fault = job_.faultOf(items_[current_->item].item, asked_, page.body);
    if (!fault.isEmpty()) {
        failPage(fault);
        co_return;
    }
    failedPagesInARow_ = 0;
    co_await takePage(page.body, stop);
}

QCoro::Task<> Collection::takePage(QByteArray page, std::stop_token stop) {
    asked_.pages << page;
    request_ = job_.nextRequest(items_[current_->item].item, asked_);
    if (!request_) {
        co_await writeItem(stop);
    }
}

QCoro::Task<> Collection::writeItem(std::stop_token stop) {
    const auto step = [this] { job_.write(items_[current_->item].item, asked_); };
    co_await patiently(step, stop);
    ++written_;
    show(ItemState::written);
    current_.reset();
}

// The last few items of a good run may all fail, each time; only a run that still has untried ones
// is given up. An item has failed once the last service for it has.
void Collection::failPage(const QString& reason) {
    ++failedPagesInARow_;
    if (asked_.way + 1 < job_.ways()) {
        asked_ = {asked_.way + 1, {}};
        request_.reset();
        return;
    }
    fail(reason);
    if (pacing_.isHopeless(failedPagesInARow_) && hasUntriedItem()) {
        state_ = RunState::hopeless;
    }
}

void Collection::fail(const QString& reason) {
    ++failures_;
    Pending pending = *current_;
    ++pending.failures;
    if (const auto pause = pacing_.beforeRetry(pending.failures)) {
        pending.due = clock_.now().addMSecs(pause->count());
        queue_ << pending;
        show(ItemState::failed, reason);
    } else {
        skipped_ << items_[pending.item].item.name;
        show(ItemState::skipped, reason);
    }
    current_.reset();
}

bool Collection::hasUntriedItem() const {
    return std::ranges::any_of(queue_, [](const Pending& it) { return it.failures == 0; });
}

void Collection::show(ItemState state, const QString& reason) {
    Progress& progress = items_[current_->item];
    progress.state = state;
    progress.reason = reason;
    if (changed) {
        changed(current_->item);
    }
}

QString Collection::summary(qsizetype names) const {
    QString text = stateText(state_) + u"：共 %1 项，写入 %2 项，跳过 %3 项"_s.arg(items_.size())
                                           .arg(written_)
                                           .arg(skipped_.size());
    const qsizetype left = items_.size() - settled();
    if (hasEnded() && left > 0) {
        text += u"，没有采集 %1 项"_s.arg(left);
    }
    text += u'。';
    if (!skipped_.isEmpty()) {
        const bool all = skipped_.size() <= names;
        text += u"\n跳过："_s + skipped_.mid(0, names).join(u"、"_s) + (all ? QString() : u" 等"_s);
    }
    return text;
}

}  // namespace guanchao
