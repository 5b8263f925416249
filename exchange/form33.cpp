#include "exchange/form33.h"

#include <QHeaderView>
#include <QScopeGuard>
#include <algorithm>

#include "base/values.h"
#include "base/worker.h"
#include "services/answer_wait.h"
#include "services/service_names.h"
#include "ui_form33.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Column { nameColumn, stocksColumn, knownColumn, stateColumn };

// In the order of the box.
constexpr BoardSort sorts[] = {BoardSort::concepts, BoardSort::industries, BoardSort::regions};

bool isTicked(const QTreeWidgetItem& item) {
    return item.checkState(nameColumn) == Qt::Checked;
}

void tick(QTreeWidgetItem& item, bool wanted) {
    item.setCheckState(nameColumn, wanted ? Qt::Checked : Qt::Unchecked);
}

}  // namespace

Form33::Form33(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form33>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    panel_ = std::make_unique<RunPanel>(
        RunPanel::Controls{ui_->pause, ui_->stop, ui_->step, ui_->progress, ui_->words});
    prepareControls();
    connectControls();
    readAnew();
}

Form33::~Form33() = default;

void Form33::prepareControls() {
    QHeaderView& header = *ui_->list->header();
    header.setDefaultAlignment(Qt::AlignCenter);
    header.setStretchLastSection(true);
    header.setSortIndicatorClearable(true);
    header.setSortIndicator(-1, Qt::AscendingOrder);
    ui_->list->setColumnWidth(nameColumn, 240);
    ui_->list->setColumnWidth(stocksColumn, 90);
    ui_->list->setColumnWidth(knownColumn, 90);
}

void Form33::connectControls() {
    connect(ui_->sorts, &QComboBox::currentIndexChanged, this, &Form33::readAnew);
    connect(ui_->reload, &QPushButton::clicked, this, &Form33::readAnew);
    connect(ui_->search, &QLineEdit::textChanged, this, &Form33::showFound);
    connect(ui_->list, &QTreeWidget::itemChanged, this, &Form33::showState);
    connect(ui_->all, &QPushButton::clicked, this,
            [this] { tickListed([](const Board&) { return true; }); });
    connect(ui_->none, &QPushButton::clicked, this,
            [this] { tickListed([](const Board&) { return false; }); });
    connect(ui_->enough, &QPushButton::clicked, this, [this] {
        tickListed([least = ui_->least->value()](const Board& board) {
            return board.stocks.value_or(0) >= least;
        });
    });
    connect(ui_->begin, &QPushButton::clicked, this, &Form33::beginImport);
    connect(ui_->pause, &QPushButton::clicked, this, &Form33::pauseOrGoOn);
    connect(ui_->stop, &QPushButton::clicked, this, &Form33::stopImport);
    connect(&stopKey_, &QShortcut::activated, this, &Form33::stopImport);
    // What is being written as the window closes stays.
    connect(this, &QDialog::finished, this, [this] {
        if (importing_) {
            emit imported();
        }
    });
}

void Form33::readAnew() {
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return readBoards(stop); });
}

QCoro::Task<> Form33::readBoards(std::stop_token stop) {
    reading_ = true;
    boards_ = {};
    showBoards({});
    panel_->say({});
    const auto end = qScopeGuard([this] {
        reading_ = false;
        showState();
    });
    const Boards boards(environment_.client, environment_.services.boards);
    const BoardSort sort = sorts[ui_->sorts->currentIndex()];
    BoardList list = co_await boards.list(sort, stop);
    const auto job = [stores = environment_.stores](const auto&) {
        return membersOfThemes(stores);
    };
    const QHash<QString, int> members = co_await inWorker(job, stop);
    boards_ = std::move(list);
    showBoards(members);
    if (boards_.boards.isEmpty()) {
        panel_->say(u"没有读到板块列表：\n"_s + boards_.lacks.join(u'\n') + u'\n' +
                    adviceOn(boards_.lacks, u"过一会儿再点“重新读取”"_s));
    }
}

void Form33::showBoards(const QHash<QString, int>& members) {
    const QSignalBlocker blocker(ui_->list);
    ui_->list->setSortingEnabled(false);
    ui_->list->clear();
    items_.clear();
    QList<QTreeWidgetItem*> items;
    for (const Board& board : boards_.boards) {
        auto* item = new QTreeWidgetItem({shortened(board.name, longestShownName)});
        tick(*item, false);
        if (board.stocks) {
            item->setData(stocksColumn, Qt::DisplayRole, *board.stocks);
        }
        item->setData(knownColumn, Qt::DisplayRole, members.value(trimBlanks(board.name)));
        item->setTextAlignment(stocksColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setTextAlignment(knownColumn, Qt::AlignRight | Qt::AlignVCenter);
        items_[board.node] = item;
        items << item;
    }
    ui_->list->addTopLevelItems(items);
    ui_->list->setSortingEnabled(true);
    showFound();
}

void Form33::showSummary() {
    if (reading_) {
        ui_->summary->setText(u"正在读取板块列表…"_s);
        return;
    }
    int themes = 0;
    qint64 members = 0;
    for (const QTreeWidgetItem* item : std::as_const(items_)) {
        const int known = item->data(knownColumn, Qt::DisplayRole).toInt();
        themes += known > 0 ? 1 : 0;
        members += known;
    }
    ui_->summary->setText(items_.isEmpty()
                              ? QString()
                              : u"%1有 %2 个板块，其中 %3 个在主题库里已有同名的主题，共 %4 只。"_s
                                    .arg(nameAndHost(boards_.service))
                                    .arg(items_.size())
                                    .arg(themes)
                                    .arg(members));
}

void Form33::showFound() {
    const QString wanted = trimBlanks(ui_->search->text());
    for (QTreeWidgetItem* item : std::as_const(items_)) {
        item->setHidden(!item->text(nameColumn).contains(wanted, Qt::CaseInsensitive));
    }
    showState();
}

// What the search hides stays as it is.
void Form33::tickListed(const std::function<bool(const Board&)>& isWanted) {
    {
        const QSignalBlocker blocker(ui_->list);
        for (const Board& board : std::as_const(boards_.boards)) {
            QTreeWidgetItem& item = *items_[board.node];
            if (!item.isHidden()) {
                tick(item, isWanted(board));
            }
        }
    }
    ui_->list->viewport()->update();
    showState();
}

QList<Board> Form33::ticked() const {
    QList<Board> boards;
    std::ranges::copy_if(boards_.boards, std::back_inserter(boards),
                         [this](const Board& it) { return isTicked(*items_[it.node]); });
    return boards;
}

void Form33::beginImport() {
    runs_.start([this](std::stop_token stop) { return importTicked(stop); });
}

QCoro::Task<> Form33::importTicked(std::stop_token stop) {
    control_ = std::make_unique<RunControl>();
    importing_ = true;
    panel_->say({});
    showState();
    ui_->pause->setFocus();
    const auto end = qScopeGuard([this] {
        importing_ = false;
        if (ui_->pause->hasFocus() || ui_->stop->hasFocus()) {
            ui_->list->setFocus();
        }
        showState();
    });
    AnswerWait client(environment_.client, environment_.clock, *this,
                      [this](const RunProgress& it) { showProgress(it); });
    BoardImport run(environment_.stores, environment_.clock, client, *control_,
                    {[this](const Board& it) { return isTicked(*items_[it.node]); },
                     [&client](const RunProgress& it) { client.show(it); },
                     [this](const BoardOutcome& it) { showOutcome(it); }});
    const QList<Board> boards = ticked();
    const BoardTally tally = co_await run.run(boards_.service, boards, stop);
    panel_->say(tally.words());
}

// A board that is being read comes to its end before the pause.
void Form33::showProgress(const RunProgress& progress) {
    progress_ = progress;
    RunProgress shown = progress;
    if (control_->isPaused() && progress.step != pausedStep) {
        shown.step = u"读完这个板块就暂停"_s;
    }
    panel_->show(shown);
}

void Form33::pauseOrGoOn() {
    if (control_->isPaused()) {
        control_->goOn();
    } else {
        control_->pause();
    }
    showProgress(progress_);
    showState();
}

void Form33::stopImport() {
    if (importing_) {
        control_->stop();
        showState();
    }
}

void Form33::showOutcome(const BoardOutcome& outcome) {
    QTreeWidgetItem& item = *items_[outcome.node];
    if (outcome.lack.isEmpty()) {
        item.setData(knownColumn, Qt::DisplayRole, outcome.stored.known);
        item.setText(stateColumn, outcome.stored.added > 0
                                      ? u"新增 %1 只"_s.arg(outcome.stored.added)
                                      : u"没有新的"_s);
        tick(item, false);
        if (outcome.stored.added > 0) {
            emit imported();
        }
    } else {
        item.setText(stateColumn, u"没有导入："_s + outcome.lack);
        item.setToolTip(stateColumn, outcome.lack);
    }
}

void Form33::showState() {
    const bool isFree = !reading_ && !importing_;
    const bool hasNumbers =
        std::ranges::any_of(boards_.boards, [](const Board& it) { return it.stocks.has_value(); });
    const qsizetype count = ticked().size();
    ui_->sorts->setEnabled(!importing_);
    ui_->reload->setEnabled(isFree);
    for (QWidget* chooser : {ui_->all, ui_->none}) {
        chooser->setEnabled(isFree && !items_.isEmpty());
    }
    ui_->enough->setEnabled(isFree && hasNumbers);
    ui_->least->setEnabled(isFree && hasNumbers);
    ui_->begin->setEnabled(isFree && count > 0);
    panel_->show(importing_ ? control_->shown() : ShownRun());
    stopKey_.setEnabled(importing_);
    ui_->ticked->setText(u"已勾选 %1 个"_s.arg(count));
    showSummary();
}

}  // namespace guanchao
