#include "research/form12.h"

#include <QScopeGuard>

#include "base/values.h"
#include "frame/run_share.h"
#include "grid/row_menu.h"
#include "research/condition_menu.h"
#include "research/form37.h"
#include "research/history_shelf.h"
#include "store/failure.h"
#include "store/store_error.h"
#include "ui_form12.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A box keeps line feeds only; a statement carries both characters of a line's end, as do the
// stored texts.
QString textOf(const QPlainTextEdit& box) {
    return box.toPlainText().replace(u'\n', u"\r\n"_s);
}

const QString readsOn = u"已列出前面的行，正在读其余的…"_s;
const QString whyLaboratory =
    u"取后期涨幅的查询语句是固定的，数据库不接受，所以算不出涨幅。\n\n回测实验室可以按业绩预约日回"
    u"测："
    u"登记以后买入，持有到预约日。现在打开吗？"_s;

// The statement has the condition in small letters.
QString nothingFound(const SelectionQuery& query) {
    const QString none = u"没有符合条件的股票"_s;
    return query.condition == query.condition.toLower()
               ? none
               : none + u"\n\n条件里的大写字母按小写比较：股票代码请填在“代码”里"_s;
}

}  // namespace

Form12::Form12(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form12>()),
      search_(environment.stores, environment.globals, grid_),
      conditions_(environment.applicationFolder + u"题材选股.ini"_s),
      figures_(new ScorePanel(environment.dialogs, environment.failures, this)),
      forecast_(environment.stores, environment.globals, environment.dialogs,
                [this](QString written, std::stop_token stop) { return search(written, stop); }),
      run_([this](const ResearchProgress& it) { showRun(it); }),
      scan_(environment.stores, environment.globals, environment.dialogs, run_,
            environment.sharedHistory.shelf()),
      returns_(environment.stores, environment.globals, environment.dialogs, run_),
      searches_(environment.failures),
      runs_(environment.failures) {
    ui_->setupUi(this);
    caption_ = windowTitle();
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(
        u"点“搜  索”，这里列出符合条件的股票\n\n"
        u"还没有选出题材时，先点“选历年主题”"_s);
    first_ = new DateBoxes(*ui_->Combo5, *ui_->Combo6, *ui_->Combo7, this);
    last_ = new DateBoxes(*ui_->Combo8, *ui_->Combo9, *ui_->Combo10, this);
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.setTitle(u"快捷菜单"_s);
    fillRowMenu(kuaimenu_, {ui_->修改关注度, ui_->导出自选股, ui_->删除一个}, {ui_->删除一个});
    ui_->rows->insertWidget(ui_->rows->indexOf(ui_->MSHFlexGrid1) + 1, figures_);
    figures_->hide();
    connectControls();
    connectRuns();
    showRun({});
    Form_Load();
}

Form12::~Form12() = default;

void Form12::connectControls() {
    connect(ui_->Command2, &QPushButton::clicked, this, &Form12::Command2_Click);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form12::Command5_Click);
    connect(ui_->Command6, &QPushButton::clicked, this, &Form12::Command6_Click);
    connect(ui_->figuresShown, &QPushButton::toggled, figures_, &QWidget::setVisible);
    auto* menu = new ConditionMenu(*ui_->Text8, conditions_, environment_.dialogs,
                                   environment_.failures, this);
    connect(ui_->conditions, &QPushButton::clicked, menu, [this, menu] {
        menu->popup(ui_->conditions->mapToGlobal(ui_->conditions->rect().bottomLeft()));
    });
    ui_->MSHFlexGrid1->setSortable({u"时间"_s, u"日期"_s});
    ui_->MSHFlexGrid1->setRowMenu(kuaimenu_);
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form12::MSHFlexGrid1_RowChosen);
    connect(ui_->MSHFlexGrid1, &GridView::rowDoubleClicked, this, &Form12::MSHFlexGrid1_DblClick);
    const auto edit = [this](const QAction* entry, const Runs::Job& job) {
        connect(entry, &QAction::triggered, this, [this, job] { searches_.start(job); });
    };
    edit(ui_->修改关注度, [this](std::stop_token stop) { return forecast_.changeAttention(stop); });
    edit(ui_->导出自选股, [this](std::stop_token stop) {
        return forecast_.exportCodes(grid_, last_->texts(), stop);
    });
    edit(ui_->删除一个, [this](std::stop_token stop) { return forecast_.remove(stop); });
}

void Form12::connectRuns() {
    const auto command = [this](QPushButton* button, const Runs::Job& job) {
        connect(button, &QPushButton::clicked, this, [this, job] { runs_.start(job); });
    };
    command(ui_->Command1, [this](std::stop_token stop) { return scan_.chooseThemes(stop); });
    command(ui_->Command3, [this](std::stop_token stop) { return scan_.addStocks(stop); });
    command(ui_->Command4, [this](std::stop_token stop) { return scan_.addFallenStocks(stop); });
    command(ui_->Command9, [this](std::stop_token stop) { return takeReturns(stop); });
    connect(ui_->stop, &QPushButton::clicked, this, &Form12::stop);
}

void Form12::Form_Load() {
    setWindowState(windowState() | Qt::WindowMaximized);
    if (const std::optional<QString> last = conditions_.last()) {
        ui_->Text8->setPlainText(*last);
    }
    const QDate today = environment_.clock.now().date();
    first_->setTexts(firstDate(today));
    last_->setTexts(lastDate(today));
    const QString& company = environment_.globals.dangqiangongsi;
    if (!company.isEmpty()) {
        ui_->Check2->setChecked(true);
        ui_->Text1->setText(company);
        // The window must be there when the store refuses the condition: it is where the user
        // mends it.
        QMetaObject::invokeMethod(this, &Form12::Command2_Click, Qt::QueuedConnection);
    }
}

SelectionQuery Form12::query() const {
    SelectionQuery query;
    query.condition = textOf(*ui_->Text8);
    query.byTheme = ui_->Check1->isChecked();
    query.theme = ui_->Text2->text();
    query.byCode = ui_->Check2->isChecked();
    query.code = ui_->Text1->text();
    query.byDates = ui_->Check3->isChecked();
    query.first = first_->texts();
    query.last = last_->texts();
    query.mergeDates = ui_->Check4->isChecked();
    return query;
}

void Form12::Command2_Click() {
    searches_.start([this](std::stop_token stop) { return search({}, stop); });
}

QCoro::Task<> Form12::search(QString written, std::stop_token stop) {
    ++searching_;
    enableControls();
    const auto end = qScopeGuard([this] {
        --searching_;
        enableControls();
        if (ui_->Label3->text() == readsOn) {
            ui_->Label3->clear();
        }
    });
    environment_.failures.guard([this] { conditions_.keepLast(ui_->Text8->toPlainText()); });
    const SelectionQuery wanted = query();
    const auto firstRowsShown = [this] {
        if (!run_.running()) {
            ui_->Label3->setText(readsOn);
        }
    };
    SelectionScore score;
    try {
        score = co_await search_.search(wanted, written, firstRowsShown, stop);
    } catch (const RefusedCondition& refused) {
        showRefused(refused.part());
        throw;
    }
    ui_->Text6->setPlainText(score.line());
    figures_->showScore(score);
    ui_->MSHFlexGrid1->setHint(nothingFound(wanted));
}

void Form12::showRefused(const TextPart& part) {
    QTextCursor cursor = ui_->Text8->textCursor();
    cursor.setPosition(static_cast<int>(part.first));
    cursor.setPosition(static_cast<int>(part.first + part.length), QTextCursor::KeepAnchor);
    ui_->Text8->setTextCursor(cursor);
    ui_->Text8->setFocus();
}

// The tick beside the theme ends it too.
QCoro::Task<> Form12::takeReturns(std::stop_token stop) {
    const QObject whileRunning;
    connect(ui_->Check1, &QCheckBox::toggled, &whileRunning, [this](bool ticked) {
        if (ticked) {
            run_.stop();
        }
    });
    QString refusal;
    try {
        co_await returns_.takeForwardReturns(ui_->Check1->isChecked(), stop);
    } catch (const StoreError& failure) {
        if (failure.fault() != StoreFault::other || failure.statement().isEmpty()) {
            throw;
        }
        refusal = failureText(failure);
    }
    if (!refusal.isEmpty()) {
        co_await offerLaboratory(refusal, stop);
    }
}

QCoro::Task<> Form12::offerLaboratory(QString refusal, std::stop_token stop) {
    const QString question = refusal + u"\n\n"_s + whyLaboratory;
    const bool opens = co_await environment_.dialogs.ask(stop, question);
    if (opens) {
        windows_.raiseOrOpen<Form37>();
        environment_.openWindows.find<Form37>()->showReportDates();
    }
}

void Form12::Command5_Click() {
    openSummary(environment_.globals.yingyongmulu, environment_.shell);
}

void Form12::Command6_Click() {
    searches_.start([this](std::stop_token stop) {
        return forecast_.changeSummary(textOf(*ui_->Text6), stop);
    });
}

void Form12::MSHFlexGrid1_RowChosen(int row) {
    if (const std::optional<PressedRow> pressed = search_.press(row)) {
        ui_->Text1->setText(pressed->code);
        ui_->Text2->setText(pressed->theme);
    }
}

void Form12::MSHFlexGrid1_DblClick() {
    const QString& host = environment_.services.sitepage.host;
    if (!host.isEmpty()) {
        environment_.shell.open(host + u'/' + environment_.globals.dangqiandm + u".html"_s);
    }
}

// The edits search anew, and write to the store of which a run holds the lock now and then.
void Form12::enableControls() {
    const bool runs = run_.running();
    const bool searches = searching_ > 0;
    for (QPushButton* button : {ui_->Command1, ui_->Command3, ui_->Command4, ui_->Command9}) {
        button->setEnabled(!runs);
    }
    ui_->Command2->setEnabled(!searches);
    ui_->Command6->setEnabled(!runs && !searches);
    ui_->修改关注度->setEnabled(!runs && !searches);
    ui_->删除一个->setEnabled(!runs && !searches);
    const bool stopping = run_.stopping() && !searches;
    ui_->stop->setEnabled(searches || (runs && !stopping));
    ui_->stop->setText(stopping ? u"正在停止…"_s : u"停止"_s);
}

void Form12::showRun(const ResearchProgress& progress) {
    enableControls();
    ui_->progress->setVisible(progress.running);
    showShare(*ui_->progress, progress.done, progress.total, progress.timeLeft);
    const bool tellsTime = progress.running && !progress.caption.isEmpty();
    setWindowTitle(tellsTime ? shortened(progress.caption, longestShownName) : caption_);
    ui_->Label2->setText(shortened(progress.subject, longestShownName));
    ui_->Label3->setText(shortened(progress.step, longestShownName));
    ui_->Label3->setToolTip(ui_->Label3->text());
    ui_->Label6->setText(progress.day);
}

// A search first: it is the shorter one, and the days of a run took long.
void Form12::stop() {
    if (searching_ > 0) {
        searches_.stop();
    } else {
        run_.stop();
    }
}

void Form12::reject() {
    if (searching_ > 0 || run_.running()) {
        stop();
    } else {
        close();
    }
}

}  // namespace guanchao
