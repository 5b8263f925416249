#include "collector/collection.h"

#include <algorithm>

#include "collector/run_order.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// So often the end of the main program is looked for while only items that failed are left.
constexpr std::chrono::milliseconds longestWait{1000};
constexpr qsizetype namesInSummary = 20;

QString stateText(RunState state) {
    switch (state) {
        case RunState::running:
            return u"正在采集"_s;
        case RunState::finished:
            return u"采集完成"_s;
        case RunState::stopped:
            return u"采集已停止"_s;
        case RunState::unwanted:
            return u"主程序已退出，采集结束"_s;
    }
    return {};
}

// A store that can't be asked at the moment takes no order back.
bool isStillWanted(const StoreFile& heat) {
    try {
        return isRunWanted(heat);
    } catch (const StoreError&) {
        return true;
    }
}

}  // namespace

Collection::Collection(Job& job, const StoreFile& heat, Http& http, const Clock& clock,
                       const Pacing& pacing)
    : job_(job), heat_(heat), http_(http), clock_(clock), pacing_(pacing) {}

void Collection::begin() {
    const QDateTime now = clock_.now();
    for (const Item& item : job_.items()) {
        queue_ << Pending{items_.size(), 0, now};
        items_ << Progress{item, ItemState::waiting, {}};
    }
}

std::optional<std::chrono::milliseconds> Collection::step() {
    if (!current_) {
        endBetweenItems();
    }
    if (stopWanted_ && state_ == RunState::running) {
        state_ = RunState::stopped;
    }
    if (state_ != RunState::running) {
        return std::nullopt;
    }
    if (!current_ && !takeDueItem()) {
        return untilNextDue();
    }
    askForPage();
    if (!current_ && queue_.isEmpty()) {
        state_ = RunState::finished;
        return std::nullopt;
    }
    return pacing_.beforePage();
}

void Collection::endBetweenItems() {
    if (queue_.isEmpty()) {
        state_ = RunState::finished;
    } else if (job_.endsWithMainProgram() && !isStillWanted(heat_)) {
        state_ = RunState::unwanted;
    }
}

bool Collection::takeDueItem() {
    const QDateTime now = clock_.now();
    const auto due =
        std::ranges::find_if(queue_, [&](const Pending& pending) { return pending.due <= now; });
    if (due == queue_.end()) {
        return false;
    }
    current_ = *due;
    queue_.erase(due);
    paths_ = job_.paths(items_[current_->item].item);
    pages_.clear();
    show(ItemState::asking);
    return true;
}

std::chrono::milliseconds Collection::untilNextDue() const {
    const auto next = std::ranges::min_element(queue_, {}, &Pending::due);
    const std::chrono::milliseconds wait(clock_.now().msecsTo(next->due));
    return std::min(wait, longestWait);
}

void Collection::askForPage() {
    const std::optional<QByteArray> page = http_.get(job_.service(), paths_[pages_.size()]);
    if (!page) {
        fail(u"网页没有读到"_s);
        return;
    }
    if (!job_.answers(items_[current_->item].item, *page)) {
        fail(u"网页里没有要找的内容"_s);
        return;
    }
    pages_ << *page;
    if (pages_.size() == paths_.size()) {
        writeItem();
    }
}

void Collection::writeItem() {
    try {
        job_.write(items_[current_->item].item, pages_);
    } catch (const OperationError& failure) {
        fail(failure.reason());
        return;
    }
    ++written_;
    show(ItemState::written);
    current_.reset();
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

void Collection::show(ItemState state, const QString& reason) {
    Progress& progress = items_[current_->item];
    progress.state = state;
    progress.reason = reason;
    if (changed) {
        changed(current_->item);
    }
}

QString Collection::summary() const {
    QString text = stateText(state_) + u"：共 %1 项，写入 %2 项，跳过 %3 项。"_s.arg(items_.size())
                                           .arg(written_)
                                           .arg(skipped_.size());
    if (!skipped_.isEmpty()) {
        const bool all = skipped_.size() <= namesInSummary;
        text += u"\n跳过："_s +
                QStringList(skipped_.first(all ? skipped_.size() : namesInSummary)).join(u"、"_s) +
                (all ? QString() : u" 等"_s);
    }
    return text;
}

}  // namespace guanchao
