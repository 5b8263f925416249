#include "utilities/diagnosis_window.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScrollBar>
#include <algorithm>

#include "base/files.h"
#include "base/log_words.h"
#include "base/run_note.h"
#include "base/time_left.h"
#include "base/worker.h"
#include "collector/search_check.h"
#include "platform/log_file.h"
#include "platform/pick_file.h"
#include "research/history_desk.h"
#include "services/service_names.h"
#include "store/failure.h"
#include "store/patience.h"
#include "ui_diagnosis_window.h"
#include "utilities/diagnosed_settings.h"
#include "utilities/service_checks.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString servicesTitle = u"各个网站的应答"_s;

}  // namespace

DiagnosisWindow::DiagnosisWindow(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::DiagnosisWindow>()),
      questions_(environment.failures),
      runs_(environment.failures) {
    ui_->setupUi(this);
    panel_ = std::make_unique<RunPanel>(
        RunPanel::Controls{nullptr, ui_->stop, ui_->step, ui_->progress, ui_->words});
    connectControls();
    countdown_.setInterval(std::chrono::seconds(1));
    countdown_.callOnTimeout(this, &DiagnosisWindow::showCountdown);
    begin();
    ui_->text->setFocus();
}

DiagnosisWindow::~DiagnosisWindow() = default;

void DiagnosisWindow::connectControls() {
    connect(ui_->collect, &QPushButton::clicked, this, &DiagnosisWindow::begin);
    connect(ui_->stop, &QPushButton::clicked, this, &DiagnosisWindow::stop);
    connect(ui_->save, &QPushButton::clicked, this, [this] {
        if (!questions_.running()) {
            questions_.start([this](std::stop_token stop) { return save(stop); });
        }
    });
    connect(ui_->copy, &QPushButton::clicked, this, &DiagnosisWindow::copy);
    connect(ui_->openLog, &QPushButton::clicked, this, &DiagnosisWindow::openLog);
    connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
    // A window that was closed is deleted a little later.
    connect(this, &QDialog::finished, this, [this] {
        questions_.stop();
        runs_.stop();
    });
}

void DiagnosisWindow::keyPressEvent(QKeyEvent* press) {
    if (press->key() == Qt::Key_Escape && collecting_) {
        stop();
    } else {
        QDialog::keyPressEvent(press);
    }
}

void DiagnosisWindow::begin() {
    if (!collecting_) {
        runs_.start([this](std::stop_token stop) { return collect(stop); });
    }
}

void DiagnosisWindow::stop() {
    if (collecting_) {
        panel_->show(ShownRun{.running = true, .paused = false, .stopping = true});
        wanted_.request_stop();
    }
}

QCoro::Task<> DiagnosisWindow::collect(std::stop_token stop) {
    RunNote note(u"收集诊断"_s, stop);
    wanted_ = std::stop_source();
    const std::stop_callback whenClosed(stop, [this] { wanted_.request_stop(); });
    collected_ = environment_.clock.now();
    sections_.clear();
    panel_->say({});
    showRun(true);
    const auto end = qScopeGuard([this] { showRun(false); });
    add({u"软件和系统"_s, systemLines()});
    add({u"屏幕和设置"_s, settingLines(environment_)});
    co_await lookThroughFolder(stop);
    co_await lookThroughStores(stop);
    co_await readLogs(stop);
    co_await askServices(stop);
    note.ended({}, wanted_.stop_requested());
    panel_->say(wanted_.stop_requested() ? u"停止了，收集到的都在上面。"_s
                                         : u"收集完了。请看一遍，再保存或复制。"_s);
}

QCoro::Task<> DiagnosisWindow::lookThroughFolder(std::stop_token stop) {
    panel_->show(RunProgress{u"正在看应用文件夹"_s, 0, 0, {}});
    const auto job = [path = environment_.applicationFolder](const auto&) {
        return folderLines(path);
    };
    const QStringList lines = co_await inWorker(job, stop);
    add({u"应用文件夹"_s, lines});
}

QCoro::Task<> DiagnosisWindow::lookThroughStores(std::stop_token stop) {
    add({u"数据库"_s, {}});
    const QList<DiagnosedStore> stores = diagnosedStores(environment_.stores);
    allBytes_ = doneBytes_ = 0;
    for (const DiagnosedStore& it : stores) {
        allBytes_ += it.bytes();
    }
    sinceStores_.start();
    for (const DiagnosedStore& it : stores) {
        const QStringList lines = co_await linesOf(it, stop);
        sections_.last().lines << lines;
        doneBytes_ += it.bytes();
        showText();
    }
}

// A look through the histories would hold up their fill.
QCoro::Task<QStringList> DiagnosisWindow::linesOf(DiagnosedStore store, std::stop_token stop) {
    if (wanted_.stop_requested()) {
        co_return QStringList{storeLine(store, u"停止了，没有检查"_s)};
    }
    if (store.isHistory && environment_.historyDesk.shown().running) {
        co_return QStringList{storeLine(store, u"正在补全，没有检查"_s)};
    }
    try {
        const QStringList lines = co_await examine(store);
        co_return QStringList(lines);
    } catch (const Cancelled&) {
        endIfStopped(stop);
    }
    co_return QStringList{storeLine(store, u"停止了，没有检查完"_s)};
}

// The library may be in the middle of a large table: a stop doesn't wait until it hears of it.
QCoro::Task<QStringList> DiagnosisWindow::examine(DiagnosedStore store) {
    const std::stop_token wanted = wanted_.get_token();
    const auto job = [store, wanted](Work<qint64>& work) {
        return storeLines(store, wanted, [&work](qint64 bytes) { work.tell(bytes); });
    };
    const std::function<void(const qint64&)> show = [this, store](const qint64& bytes) {
        showShare(store, bytes);
    };
    showShare(store, 0);
    const std::optional<QStringList> lines = co_await inWorker<qint64>(job, show, wanted, wanted);
    if (!lines) {
        throw Cancelled();
    }
    co_return QStringList(*lines);
}

void DiagnosisWindow::showShare(const DiagnosedStore& store, qint64 bytes) {
    constexpr qint64 unit = 1024;
    const int done = static_cast<int>((doneBytes_ + std::min(bytes, store.bytes())) / unit);
    const int total = static_cast<int>(allBytes_ / unit);
    const std::chrono::nanoseconds elapsed(sinceStores_.nsecsElapsed());
    panel_->show(
        RunProgress{u"正在检查"_s + store.name, done, total, timeLeftWords(elapsed, done, total)});
}

QCoro::Task<> DiagnosisWindow::readLogs(std::stop_token stop) {
    const auto job = [path = environment_.applicationFolder](const auto&) {
        return logSections(path);
    };
    const QList<DiagnosisSection> sections = co_await inWorker(job, stop);
    for (const DiagnosisSection& it : sections) {
        add(it);
    }
}

QCoro::Task<> DiagnosisWindow::askServices(std::stop_token stop) {
    add({servicesTitle, {}});
    const auto end = qScopeGuard([this] { countdown_.stop(); });
    QString ending;
    try {
        const QString unasked = co_await askChecks();
        ending = unasked;
    } catch (const Cancelled&) {
        ending = u"停止了，没有问完"_s;
    }
    endIfStopped(stop);
    if (!ending.isEmpty()) {
        sections_.last().lines << ending;
        showText();
    }
}

// Says what couldn't be asked, and why.
QCoro::Task<QString> DiagnosisWindow::askChecks() {
    const std::stop_token wanted = wanted_.get_token();
    QList<Check> checks = serviceChecks(environment_.services);
    QString unasked;
    try {
        const Check site = co_await patiently([this] { return siteCheck(); }, wanted);
        checks << site;
    } catch (const OperationError& failure) {
        failureReason(failure);
        unasked = u"没有问搜索网站："_s + loggedReason(failure);
    }
    CheckRun run(
        environment_.client, environment_.clock, betweenChecks,
        [this](const CheckRow& row) {
            sections_.last().lines << checkLine(row);
            showText();
        },
        [this](const Check& check, const Service& service, const CheckStep& step) {
            showAsking(check, service, step);
        });
    co_await run.run(checks, wanted);
    co_return QString(unasked);
}

Check DiagnosisWindow::siteCheck() const {
    const Activity activity(u"测试搜索网站"_s);
    return searchCheck(environment_.services, environment_.stores.heat,
                       environment_.applicationFolder, environment_.clock);
}

void DiagnosisWindow::showAsking(const Check& check, const Service& service,
                                 const CheckStep& step) {
    const QString words =
        u"正在问 "_s + purposeName(check.purpose) + u' ' + shownAddress(service.host);
    asking_ = {words, step.asked, step.total, {}};
    atMost_.setRemainingTime(step.atMost);
    countdown_.start();
    showCountdown();
}

void DiagnosisWindow::showCountdown() {
    const auto left = std::chrono::ceil<std::chrono::seconds>(atMost_.remainingTimeAsDuration());
    asking_.timeLeft = atMostWords(std::max(left, std::chrono::seconds(1)));
    panel_->show(asking_);
}

QCoro::Task<> DiagnosisWindow::save(std::stop_token stop) {
    const QString text = diagnosisText(sections_, collected_);
    const QString folder = offeredFolder();
    const QString name = diagnosisFileName(collected_);
    const QStringList filters = {u"文本文件 (*.txt)"_s};
    const QString path = co_await environment_.dialogs.baocunwenjian(stop, folder, name, filters);
    if (path.isEmpty()) {
        panel_->say(u"没有保存。"_s);
        co_return;
    }
    panel_->say({});  // what it said of the former one
    const Activity activity(u"保存诊断"_s);
    replaceFile(path, text.toUtf8());
    panel_->say(u"已保存到 "_s + path);
}

void DiagnosisWindow::copy() {
    environment_.clipboard.setText(diagnosisText(sections_, collected_));
    panel_->say(u"已复制，可以粘贴到邮件里。"_s);
}

void DiagnosisWindow::openLog() {
    const QString path = environment_.applicationFolder + logOfProgram;
    if (QFileInfo::exists(path)) {
        environment_.shell.open(path);
    } else {
        panel_->say(u"还没有日志。"_s);
    }
}

void DiagnosisWindow::add(const DiagnosisSection& section) {
    sections_ << section;
    showText();
}

void DiagnosisWindow::showRun(bool running) {
    collecting_ = running;
    panel_->show(ShownRun{.running = running, .paused = false, .stopping = false});
    for (QPushButton* it : {ui_->collect, ui_->save, ui_->copy}) {
        it->setEnabled(!running);
    }
}

// What the user is reading stays where it is.
void DiagnosisWindow::showText() {
    const int place = ui_->text->verticalScrollBar()->value();
    ui_->text->setPlainText(diagnosisText(sections_, collected_));
    ui_->text->verticalScrollBar()->setValue(place);
}

}  // namespace guanchao
