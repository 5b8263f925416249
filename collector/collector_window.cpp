#include "collector/collector_window.h"

#include <QScopeGuard>
#include <algorithm>

#include "base/values.h"
#include "grid/colours.h"
#include "grid/table_columns.h"
#include "ui_collector_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stateColumn = 2;
constexpr int reasonColumn = 3;
constexpr int numberWidth = 700;
const QList<TableColumn> columns = {{u"项目"_s, 2700}, {u"状态"_s, 1500}, {u"原因"_s, 2700}};

QString stateText(ItemState state, bool hasEnded) {
    switch (state) {
        case ItemState::waiting:
            return hasEnded ? u"没有采集"_s : u"等待"_s;
        case ItemState::done:
            return u"今天已采集"_s;
        case ItemState::asking:
            return u"正在采集"_s;
        case ItemState::written:
            return u"已写入"_s;
        case ItemState::failed:
            return hasEnded ? u"失败"_s : u"失败，稍后再试"_s;
        case ItemState::skipped:
            return u"已跳过"_s;
    }
    return {};
}

Colour stateColour(ItemState state) {
    switch (state) {
        case ItemState::done:
        case ItemState::written:
            return stockColour;
        case ItemState::failed:
        case ItemState::skipped:
            return riseColour;
        default:
            return textColour;
    }
}

}  // namespace

CollectorWindow::CollectorWindow(Collection& collection, Dialogs& dialogs, Failures& failures,
                                 const Clock& clock, const QString& title)
    : QDialog(nullptr, Qt::Window),
      collection_(collection),
      dialogs_(dialogs),
      clock_(clock),
      ui_(std::make_unique<Ui::CollectorWindow>()),
      runs_(failures),
      closing_(failures) {
    ui_->setupUi(this);
    setWindowTitle(title + u"--因特网数据采集"_s);
    ui_->itemsGrid->setGrid(grid_);
    ui_->itemsGrid->allowExport(dialogs, failures);
    ui_->itemsGrid->setHint(u"没有要采集的项目\n\n关注度大于设定值的项目才采集"_s);
    ui_->itemsGrid->fillWithLastColumn();
    // Assistive tools toggle a button without a click.
    connect(ui_->pauseButton, &QPushButton::toggled, this, &CollectorWindow::pauseButton_Toggled);
    connect(ui_->stopButton, &QPushButton::clicked, this, &CollectorWindow::stopButton_Click);
    connect(ui_->anewButton, &QPushButton::clicked, this, [this] { beginAgain(Scope::all); });
    connect(ui_->goOnButton, &QPushButton::clicked, this, [this] { beginAgain(Scope::rest); });
    connect(ui_->closeButton, &QPushButton::clicked, this, &QDialog::close);
    connect(&helpKey_, &QShortcut::activated, this, [this] { help(); });
    connect(&second_, &QTimer::timeout, this, &CollectorWindow::showTime);
    collection_.changed = [this](qsizetype item) { showChanged(item); };
    for (QPushButton* button : {ui_->goOnButton, ui_->anewButton, ui_->closeButton}) {
        button->hide();
    }
    showItems();
    showFigures();
}

// Nobody is told the end of a run by a window that goes.
CollectorWindow::~CollectorWindow() {
    ended = nullptr;
}

void CollectorWindow::start() {
    second_.start(std::chrono::seconds(1));
    runs_.start([this](std::stop_token stop) { return collect(stop); });
}

QCoro::Task<> CollectorWindow::collect(std::stop_token stop) {
    const auto end = qScopeGuard([this] { showEnd(); });
    co_await collection_.run(stop);
}

void CollectorWindow::pauseButton_Toggled(bool paused) {
    collection_.setPaused(paused);
    ui_->pauseButton->setText(paused ? u"继续(&P)"_s : u"暂停(&P)"_s);
    ui_->pauseButton->setAccessibleName(paused ? u"继 续"_s : u"暂 停"_s);
    showFigures();
}

void CollectorWindow::stopButton_Click() {
    runs_.stop();
}

void CollectorWindow::reject() {
    if (collection_.hasEnded()) {
        QDialog::reject();
    } else if (!closing_.running()) {
        closing_.start([this](std::stop_token stop) { return askAndClose(stop); });
    }
}

QCoro::Task<> CollectorWindow::askAndClose(std::stop_token stop) {
    const bool agreed =
        co_await dialogs_.ask(stop, u"采集还没有完成，已写入的数据会保留。停止采集并关闭吗?"_s);
    if (!agreed) {
        co_return;
    }
    // It may have ended meanwhile.
    if (!collection_.hasEnded()) {
        stopButton_Click();
    }
    QDialog::reject();
}

void CollectorWindow::showItems() {
    const int rows = static_cast<int>(collection_.items().size());
    const GridFill fill(grid_);
    beginTable(grid_, columns, rows, numberWidth);
    for (int row = 1; row <= rows; ++row) {
        grid_.setTextMatrix(row, 1, collection_.items()[row - 1].item.name);
        showItem(row - 1);
    }
}

void CollectorWindow::showItem(qsizetype item) {
    const Collection::Progress& progress = collection_.items()[item];
    const int row = static_cast<int>(item) + 1;
    grid_.setTextMatrix(row, stateColumn, stateText(progress.state, collection_.hasEnded()));
    grid_.setTextMatrix(row, reasonColumn, progress.reason);
    for (const int col : {stateColumn, reasonColumn}) {
        grid_.setCellForeColor(row, col, stateColour(progress.state));
    }
}

void CollectorWindow::showChanged(qsizetype item) {
    showItem(item);
    showFigures();
    if (collection_.items()[item].state == ItemState::asking) {
        followItem(item);
    }
}

// The item at hand stays in sight, unless the user has scrolled the one before out of it.
void CollectorWindow::followItem(qsizetype item) {
    const auto indexOf = [this](qsizetype it) { return grid_.index(static_cast<int>(it), 0); };
    const QRect before = ui_->itemsGrid->visualRect(indexOf(followed_));
    if (ui_->itemsGrid->viewport()->rect().intersects(before)) {
        ui_->itemsGrid->scrollTo(indexOf(item));
        followed_ = item;
    }
}

void CollectorWindow::showFigures() {
    const RunTally tally = collection_.tally();
    ui_->progressBar->setMaximum(std::max(tally.items, 1));
    ui_->progressBar->setValue(tally.settled());
    ui_->progressBar->setFormat(tally.items > 0 ? u"%v / %m"_s : u"没有要采集的项目"_s);
    ui_->stateLabel->setText(collection_.summary());
    const bool runs = collection_.state() == RunState::running;
    const QString pace = runs ? tally.paceWords(clock_.now()) : QString();
    ui_->progressLabel->setText(tally.progressWords() +
                                (pace.isEmpty() ? QString() : u'；' + pace));
    ui_->waitLabel->setText(collection_.waitWords());
    ui_->waitLabel->setVisible(!collection_.hasEnded());
    ui_->failuresLabel->setText(tally.failures.isEmpty() ? u"没有失败"_s : tally.failureWords());
    showSkipped(tally.skipped);
}

void CollectorWindow::showSkipped(const QStringList& names) {
    ui_->skippedLabel->setVisible(!names.isEmpty());
    ui_->skippedText->setVisible(!names.isEmpty());
    const QString text = names.join(u'、');
    if (text != ui_->skippedText->toPlainText()) {
        ui_->skippedText->setPlainText(text);
    }
}

void CollectorWindow::showEnd() {
    showFigures();
    for (qsizetype item = 0; item < collection_.items().size(); ++item) {
        showItem(item);
    }
    ui_->pauseButton->hide();
    ui_->stopButton->hide();
    const RunTally tally = collection_.tally();
    ui_->goOnButton->setVisible(tally.before + tally.written < tally.items);
    ui_->anewButton->show();
    ui_->closeButton->show();
    ui_->closeButton->setDefault(true);
    ui_->closeButton->setFocus();
    if (ended) {
        ended();
    }
}

void CollectorWindow::showTime() {
    if (collection_.hasEnded()) {
        showWhetherWanted();
    } else {
        showFigures();
    }
}

// The main program may end, and order a run again, while the result is being read.
bool CollectorWindow::showWhetherWanted() {
    const bool wanted = collection_.isWanted();
    ui_->waitLabel->setText(
        wanted ? QString() : u"主程序已退出。要再采集，请关闭这个窗口，打开观潮台，再点“采集”。"_s);
    ui_->waitLabel->setVisible(!wanted);
    ui_->goOnButton->setEnabled(wanted);
    ui_->anewButton->setEnabled(wanted);
    return wanted;
}

void CollectorWindow::beginAgain(Scope scope) {
    if (showWhetherWanted()) {
        again(scope);
    }
}

}  // namespace guanchao
