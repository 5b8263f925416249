#include "collector/collector_window.h"

#include <QScopeGuard>
#include <algorithm>

#include "base/values.h"
#include "grid/colours.h"
#include "ui_collector_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stateColumn = 2;
constexpr int reasonColumn = 3;
const QStringList headers = {u"序号"_s, u"项目"_s, u"状态"_s, u"原因"_s};
constexpr int widths[] = {700, 2700, 1500, 2700};

QString stateText(ItemState state) {
    switch (state) {
        case ItemState::waiting:
            return u"等待"_s;
        case ItemState::asking:
            return u"正在采集"_s;
        case ItemState::written:
            return u"已写入"_s;
        case ItemState::failed:
            return u"失败，稍后再试"_s;
        case ItemState::skipped:
            return u"已跳过"_s;
    }
    return {};
}

Colour stateColour(ItemState state) {
    switch (state) {
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
                                 const QString& title)
    : QDialog(nullptr, Qt::Window),
      collection_(collection),
      dialogs_(dialogs),
      ui_(std::make_unique<Ui::CollectorWindow>()),
      runs_(failures),
      closing_(failures) {
    ui_->setupUi(this);
    setWindowTitle(title + u"--因特网数据采集"_s);
    ui_->itemsGrid->setGrid(grid_);
    ui_->itemsGrid->allowExport(dialogs, failures);
    ui_->itemsGrid->setHint(u"没有要采集的项目\n\n关注度大于设定值的项目才采集"_s);
    connect(ui_->pauseButton, &QPushButton::clicked, this, &CollectorWindow::pauseButton_Click);
    connect(ui_->stopButton, &QPushButton::clicked, this, &CollectorWindow::stopButton_Click);
    collection_.changed = [this](qsizetype item) { followItem(item); };
    showItems();
    showFigures();
}

// Nobody is told the end of a run by a window that goes.
CollectorWindow::~CollectorWindow() {
    ended = nullptr;
}

void CollectorWindow::start() {
    runs_.start([this](std::stop_token stop) { return collect(stop); });
}

QCoro::Task<> CollectorWindow::collect(std::stop_token stop) {
    const auto end = qScopeGuard([this] { showEnd(); });
    co_await collection_.run(stop);
}

void CollectorWindow::pauseButton_Click() {
    const bool paused = ui_->pauseButton->isChecked();
    collection_.setPaused(paused);
    ui_->pauseButton->setText(paused ? u"继 续"_s : u"暂 停"_s);
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
    grid_.setCols(static_cast<int>(headers.size()));
    grid_.setRows(rows + 1);
    for (int col = 0; col < headers.size(); ++col) {
        grid_.setTextMatrix(0, col, headers[col]);
        grid_.setColWidth(col, widths[col]);
    }
    for (int row = 1; row <= rows; ++row) {
        grid_.setInteger(row, 0, row);
        grid_.setTextMatrix(row, 1, collection_.items()[row - 1].item.name);
        showItem(row - 1);
    }
}

void CollectorWindow::showItem(qsizetype item) {
    const Collection::Progress& progress = collection_.items()[item];
    const int row = static_cast<int>(item) + 1;
    grid_.setTextMatrix(row, stateColumn, stateText(progress.state));
    grid_.setTextMatrix(row, reasonColumn, progress.reason);
    for (const int col : {stateColumn, reasonColumn}) {
        grid_.setCellForeColor(row, col, stateColour(progress.state));
    }
}

// The item at hand stays in sight, unless the user looks at the list.
void CollectorWindow::followItem(qsizetype item) {
    showItem(item);
    showFigures();
    if (collection_.items()[item].state == ItemState::asking && !ui_->itemsGrid->hasFocus()) {
        ui_->itemsGrid->scrollTo(grid_.index(static_cast<int>(item), 0));
    }
}

void CollectorWindow::showFigures() {
    const int items = static_cast<int>(collection_.items().size());
    ui_->progressBar->setMaximum(std::max(items, 1));
    ui_->progressBar->setValue(items > 0 ? collection_.settled() : 1);
    ui_->failuresLabel->setText(u"失败次数：%1"_s.arg(collection_.failures()));
    ui_->stateLabel->setText(shortened(collection_.summary(), longestShownMessage));
}

void CollectorWindow::showEnd() {
    showFigures();
    ui_->pauseButton->setEnabled(false);
    ui_->stopButton->setEnabled(false);
    if (ended) {
        ended();
    }
}

}  // namespace guanchao
