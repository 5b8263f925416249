#include "research/form32.h"

#include <QScopeGuard>
#include <algorithm>

#include "base/activity.h"
#include "base/short_amounts.h"
#include "base/values.h"
#include "base/worker.h"
#include "grid/table_columns.h"
#include "research/history_desk.h"
#include "services/stock_code.h"
#include "ui_form32.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 700;
const QList<TableColumn> columns = {{u"代码"_s, 1400},   {u"简称"_s, 1500},
                                    {u"第一天"_s, 1600}, {u"最后一天"_s, 1600},
                                    {u"天数"_s, 1000},   {u"缺少天数"_s, 1200}};

}  // namespace

Form32::Form32(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form32>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    panel_ = std::make_unique<RunPanel>(
        RunPanel::Controls{ui_->pause, ui_->stop, ui_->step, ui_->progress, ui_->words});
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setSortable({u"第一天"_s, u"最后一天"_s});
    grid_.setKeyColumns({1});
    ui_->years->setMaximum(HistoryDesk::mostYears);
    ui_->years->setValue(environment.historyDesk.years());
    ui_->daily->setChecked(environment.historyDesk.updatesByItself());
    connectControls();
    showFill();
    readAnew();
}

Form32::~Form32() = default;

void Form32::connectControls() {
    HistoryDesk& desk = environment_.historyDesk;
    connect(ui_->years, &QSpinBox::valueChanged, &desk, &HistoryDesk::setYears);
    connect(ui_->daily, &QCheckBox::toggled, &desk, &HistoryDesk::setUpdatesByItself);
    connect(ui_->fill, &QPushButton::clicked, &desk, &HistoryDesk::fill);
    connect(ui_->pause, &QPushButton::clicked, &desk, [&desk] {
        if (desk.shown().paused) {
            desk.goOn();
        } else {
            desk.pause();
        }
    });
    connect(ui_->stop, &QPushButton::clicked, &desk, &HistoryDesk::stop);
    connect(&desk, &HistoryDesk::changed, this, &Form32::showFill);
    connect(&desk, &HistoryDesk::settled, this, &Form32::readAnew);
}

void Form32::showFill() {
    const ShownFill& fill = environment_.historyDesk.shown();
    ui_->years->setEnabled(!fill.running);
    ui_->fill->setEnabled(!fill.running);
    panel_->show(static_cast<const ShownRun&>(fill));
    panel_->show(fill.progress);
    panel_->say(fill.running ? QString() : fill.words);
    showHint();
    showServices();
}

void Form32::showHint() {
    QString hint = u"还没有历史行情\n\n点“补全”，就从公开的行情网站补上"_s;
    if (environment_.historyDesk.shown().running) {
        hint = u"正在补全\n\n补全以后，这里列出各只股票"_s;
    } else if (reading_) {
        hint = u"正在读取历史行情…"_s;
    }
    ui_->MSHFlexGrid1->setHint(hint);
}

void Form32::showServices() {
    ui_->services->setText(environment_.historyDesk.serviceLines().join(u'\n'));
}

void Form32::readAnew() {
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return readHeld(stop); });
}

QCoro::Task<> Form32::readHeld(std::stop_token stop) {
    reading_ = true;
    showHint();
    const auto end = qScopeGuard([this] {
        reading_ = false;
        showHint();
    });
    const auto job = [files = HistoryFiles{environment_.stores.firstHistory.path,
                                           environment_.stores.secondHistory.path},
                      main = environment_.stores.main,
                      today = environment_.clock.now().date()](const auto& work) {
        const Activity activity(u"读取历史行情"_s);
        Held held;
        held.codes = readHistoryLibrary(main).codes;
        held.codes.prepend({leadingIndex, u"上证指数"_s});
        QStringList codes;
        for (const HistoryCode& code : held.codes) {
            codes << code.dm;
        }
        held.state = readHistoryState(files, codes, today, [&work] { work.endIfAbandoned(); });
        return held;
    };
    const Held held = co_await inWorker(job, stop);
    showHeld(held);
}

QString Form32::summaryOf(const Held& held) {
    const QList<QDate>& days = held.state.marketDays;
    if (days.isEmpty()) {
        return {};
    }
    const auto withDays = std::ranges::count_if(
        held.codes, [&](const HistoryCode& it) { return held.state.codes.value(it.dm).count > 0; });
    return u"交易日 %1 到 %2，共 %3 天；代码 %4 只，有日线的 %5 只；两个库共 %6。"_s.arg(
        dateText(days.first()), dateText(days.last()), QString::number(days.size()),
        QString::number(held.codes.size()), QString::number(withDays), sizeWords(held.state.bytes));
}

void Form32::showHeld(const Held& held) {
    ui_->summary->setText(summaryOf(held));
    ui_->summary->setVisible(!held.state.marketDays.isEmpty());
    if (held.state.marketDays.isEmpty()) {
        return;
    }
    const GridFill fill(grid_);
    beginTable(grid_, columns, held.codes.size(), numberWidth);
    for (int row = 1; row <= held.codes.size(); ++row) {
        const HistoryCode& code = held.codes[row - 1];
        fillRow(row, code, held.state.codes.value(code.dm));
    }
}

void Form32::fillRow(int row, const HistoryCode& code, const StoredDays& stored) {
    const bool hasDays = stored.count > 0;
    grid_.setTextMatrix(row, 1, code.dm);
    grid_.setTextMatrix(row, 2, code.jc);
    grid_.setTextMatrix(row, 3, hasDays ? dateText(stored.first) : QString());
    grid_.setTextMatrix(row, 4, hasDays ? dateText(stored.last) : QString());
    grid_.setInteger(row, 5, stored.count);
    const bool isNew = !hasDays && stored.asked.isNull();
    if (isNew) {
        grid_.setTextMatrix(row, 6, u"全部"_s);
    } else {
        grid_.setInteger(row, 6, stored.gaps);
    }
}

}  // namespace guanchao
