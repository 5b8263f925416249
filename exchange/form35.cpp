#include "exchange/form35.h"

#include <QHeaderView>
#include <QScopeGuard>
#include <algorithm>

#include "base/values.h"
#include "base/worker.h"
#include "exchange/code_table_settings.h"
#include "services/answer_wait.h"
#include "services/stock_code.h"
#include "ui_form35.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What an update looks at, and what it leaves as it is.
QString tableWords(const KnownCodes& known, bool withBeijing) {
    qsizetype stocks = 0;
    qsizetype ofBeijing = 0;
    for (auto it = known.cbegin(); it != known.cend(); ++it) {
        stocks += isStockCode(it.key()) ? 1 : 0;
        ofBeijing += isOfBeijing(it.key()) ? 1 : 0;
    }
    const qsizetype others = known.size() - stocks - ofBeijing;
    const auto gone = std::ranges::count_if(known, &KnownCode::isDelisted);
    return u"代码表里有沪深股票 %1 只，北交所股票 %2 只（%3）%4%5。\n"_s.arg(stocks)
        .arg(ofBeijing)
        .arg(withBeijing ? u"也更新"_s : u"没有勾选，不更新"_s,
             others > 0 ? u"，其他代码 %1 个"_s.arg(others) : QString(),
             gone > 0 ? u"；其中已退市 %1 只"_s.arg(gone) : QString());
}

}  // namespace

Form35::Form35(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form35>()),
      iniPath_(environment.interfaceIniPath()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    panel_ = std::make_unique<RunPanel>(
        RunPanel::Controls{nullptr, ui_->stop, ui_->step, ui_->progress, ui_->words});
    ui_->list->header()->setDefaultAlignment(Qt::AlignCenter);
    ui_->list->setColumnWidth(0, 90);
    ui_->list->setColumnWidth(1, 110);
    ui_->list->setColumnWidth(2, 150);
    ui_->beijing->setChecked(CodeTableSettings(iniPath_).wantsBeijing());
    connectControls();
    showState();
    runs_.start([this](std::stop_token stop) { return readTable(stop); });
}

Form35::~Form35() = default;

void Form35::connectControls() {
    connect(ui_->beijing, &QCheckBox::toggled, this, [this](bool wanted) {
        CodeTableSettings(iniPath_).setWantsBeijing(wanted);
        showTable();
    });
    connect(ui_->begin, &QPushButton::clicked, this, &Form35::begin);
    connect(ui_->stop, &QPushButton::clicked, this, &Form35::stopUpdate);
    connect(&stopKey_, &QShortcut::activated, this, &Form35::stopUpdate);
}

QCoro::Task<> Form35::readTable(std::stop_token stop) {
    const auto job = [stores = environment_.stores](const auto&) { return readKnownCodes(stores); };
    known_ = co_await inWorker(job, stop);
    showTable();
}

void Form35::begin() {
    if (!updating_) {
        runs_.start([this](std::stop_token stop) { return update(stop); });
    }
}

QCoro::Task<> Form35::update(std::stop_token stop) {
    control_ = std::make_unique<RunControl>();
    updating_ = true;
    ui_->list->clear();
    panel_->say({});
    showState();
    const auto end = qScopeGuard([this] {
        updating_ = false;
        showState();
    });
    AnswerWait client(environment_.client, environment_.clock, *this,
                      [this](const RunProgress& it) { panel_->show(it); });
    CodeTableUpdate run(environment_.stores, environment_.clock, client,
                        environment_.services.stockList,
                        environment_.applicationFolder + u"initials.csv"_s, *control_,
                        [&client](const RunProgress& it) { client.show(it); });
    const CodeTableResult result = co_await run.run(ui_->beijing->isChecked(), stop);
    showResult(result);
    co_await readTable(stop);
}

void Form35::stopUpdate() {
    if (updating_) {
        control_->stop();
        showState();
    }
}

void Form35::showTable() {
    const QString last = CodeTableSettings(iniPath_).lastUpdate();
    ui_->summary->setText(
        tableWords(known_, ui_->beijing->isChecked()) +
        (last.isEmpty() ? u"还没有从名单更新过。"_s : u"上次更新：%1"_s.arg(last)));
}

void Form35::showResult(const CodeTableResult& result) {
    if (!result.stopped && result.hasList) {
        CodeTableSettings(iniPath_).setLastUpdate(timeText(environment_.clock.now()));
    }
    if (!result.changes.isEmpty()) {
        emit imported();
    }
    showChanges(result.changes);
    panel_->say(result.words());
}

void Form35::showChanges(const CodeTableChanges& changes) {
    QList<QTreeWidgetItem*> items;
    const auto add = [&](const QString& what, const ListedStock& stock, const QString& before) {
        items << new QTreeWidgetItem({what, stock.dm, stock.name, before});
    };
    for (const ListedStock& it : changes.delisted) {
        add(u"退市"_s, it, {});
    }
    for (const ListedStock& it : changes.back) {
        add(u"恢复"_s, it, {});
    }
    for (const CodeTableChanges::Renamed& it : changes.renamed) {
        add(u"改名"_s, it.stock, it.before);
    }
    for (const ListedStock& it : changes.added) {
        add(u"新加入"_s, it, {});
    }
    ui_->list->addTopLevelItems(items);
}

void Form35::showState() {
    ui_->beijing->setEnabled(!updating_);
    ui_->begin->setEnabled(!updating_);
    panel_->show(updating_ ? control_->shown() : ShownRun());
    stopKey_.setEnabled(updating_);
}

}  // namespace guanchao
