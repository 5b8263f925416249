// The update of all quotes in Form2: by F9, by itself, and how it is stopped.
#include <QScopeGuard>

#include "app/form2.h"
#include "base/run_note.h"
#include "store/failure.h"
#include "ui_form2.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void Form2::Command4_Click() {
    if (!ui_->Command4->isEnabled()) {
        return;
    }
    // A download holds the store: a batch would wait for this program's own lock.
    if (environment_.globals.hqmang > 0) {
        environment_.dialogs.tell(u"正在写入数据，请稍后再更新行情。"_s);
        return;
    }
    quoteRuns_.stop();  // one that has begun by itself
    quoteRuns_.start([this](std::stop_token stop) { return updateQuotes(stop); });
}

QCoro::Task<> Form2::updateQuotes(std::stop_token stop) {
    const QuoteTally tally = co_await runQuotes(stop);
    co_await refreshTables(stop);
    dayBookDesk_->look();
    environment_.dialogs.tell(tally.words());
}

// However it ends, the controls are then as before it.
QCoro::Task<QuoteTally> Form2::runQuotes(std::stop_token stop) {
    showUpdating(true);
    const auto end = qScopeGuard([this, time = ui_->Label6->text()] {
        showUpdating(false);
        ui_->Label6->setText(time);
    });
    RunNote note(u"更新行情数据"_s, stop);
    const auto show = [this](const QuoteProgress& it) { showProgress(it); };
    co_await dayBookDesk_->write(stop);
    const QuoteTally tally = co_await quoteRun_.run(show, stop);
    if (tally.failed()) {
        note.failed(tally.reason());
    } else {
        note.ended(tally.counts());
    }
    co_return tally;
}

void Form2::updateByItself() {
    if (!quoteRuns_.running() && environment_.globals.hqmang == 0) {
        quoteRuns_.start([this](std::stop_token stop) { return updateQuietly(stop); });
    }
}

// Without a box: the line says what didn't come, until the next time. Nor is it noted in the log,
// where thousands of a day would push out all else.
QCoro::Task<> Form2::updateQuietly(std::stop_token stop) {
    QString words;
    try {
        const auto note = [this](const QuoteProgress& progress) { progress_ = progress; };
        co_await dayBookDesk_->write(stop);
        const QuoteTally tally = co_await quoteRun_.run(note, stop);
        co_await refreshTables(stop);
        dayBookDesk_->look();
        words = tally.unanswered() == 0 ? QString() : tally.words().section(u'\n', 0, 0);
    } catch (const std::exception& failure) {
        words = failureReason(failure);
    }
    ui_->Label1->setText(words.isEmpty() ? words : u"自动更新："_s + words);
}

void Form2::showUpdating(bool updating) {
    ui_->Command4->setEnabled(!updating);
    ui_->gengxin->setEnabled(!updating);
    ui_->stopRun->setVisible(updating);
    ui_->progress->setVisible(updating);
    ui_->Label1->setText(updating ? u"正在更新行情…"_s : QString());
}

// What the batches have brought stays, and shows.
void Form2::stopQuotes() {
    if (quoteRuns_.running()) {
        quoteRuns_.stop();
        ui_->Label1->setText(progress_.stoppedWords());
        refreshRuns_.stop();
        refreshRuns_.start([this](std::stop_token stop) { return refreshTables(stop); });
    }
}

// What lies on top first.
void Form2::escape() {
    if (picker_->listIsOpen()) {
        picker_->hideList();
    } else {
        stopQuotes();
        exchangeRun_.stop();
    }
}

void Form2::showProgress(const QuoteProgress& progress) {
    progress_ = progress;
    ui_->progress->setMaximum(progress.total);
    ui_->progress->setValue(progress.asked);
    if (!progress.words().isEmpty()) {
        ui_->Label6->setText(progress.words());
    }
}

}  // namespace guanchao
