#include "app/form2.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QShortcut>
#include <utility>

#include "app/auto_update.h"
#include "app/looks_menu.h"
#include "app/start_questions.h"
#include "app/startup.h"
#include "base/pause.h"
#include "frame/looks.h"
#include "frame/practice_band.h"
#include "frame/run_share.h"
#include "research/history_desk.h"
#include "store/patience.h"
#include "ui_form2.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Widths and heights in twips.
constexpr int themeGridColumns = 6600;
constexpr int themeGridToGain = 3000;
constexpr int stockGridToGain = 7460;
constexpr int gutter = 250;

}  // namespace

Form2::Form2(Environment& environment, Windows& windows, Desktop desktop)
    : environment_(environment),
      windows_(windows),
      desktop_(std::move(desktop)),
      ui_(std::make_unique<Ui::Form2>()),
      themeTable_(environment.stores, environment.globals, environment.clock, environment.dialogs,
                  themes_, stocks_),
      themeCommands_(environment.stores, environment.clock, environment.dialogs,
                     environment.removals, environment.edits),
      watchlist_(environment.stores, environment.dialogs, environment.removals),
      quoteFeed_(environment.stores, environment.globals, environment.clock,
                 QuoteSource(environment.client, environment.clock, environment.services)),
      quoteRun_(environment.stores, environment.clock, quoteFeed_),
      alarmDesk_(environment.stores, environment.globals, environment.clock, quoteFeed_,
                 environment.failures, desktop_.sound,
                 [this] { return alarmView_->showMonitors(); }),
      exchangeRun_([this](const ShownExchange& it) { showExchange(it); }),
      backupExport_(environment.stores, environment.dialogs, exchangeRun_),
      versionCheck_(environment.globals, environment.services.vendor, environment.client,
                    environment.dialogs, environment.shell) {
    quoteFeed_.alsoNote(environment.polledDay);
    setUpControls();
    arrangeGrids();
    buildMenus();
    connectControls();
    connectTimers();
    connectAlarms();
    connectMenus();
    connectGrids();
}

Form2::~Form2() = default;

void Form2::setUpControls() {
    ui_->setupUi(this);
    ui_->Command1->setIcon(searchIcon());
    ui_->Command2->setIcon(searchIcon());
    ui_->Command4->setIcon(updateIcon());
    ui_->practiceBand->hide();
    ui_->progress->hide();
    ui_->stopRun->hide();
    for (QWidget* shown : exchangeControls()) {
        shown->hide();
    }
    ui_->WindowsMediaPlayer1->hide();
    ui_->MSHFlexGrid1->setGrid(themes_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid2->setGrid(stocks_);
    ui_->MSHFlexGrid2->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid2->setHint(
        u"点左边的一个主题，这里列出它的个股\n\n“主题”菜单的“行情列表”列出全部股票，F9 更新行情"_s);
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           mainWindowPlace, [this] { 刷新_Click(); });
    undoMenu_ =
        std::make_unique<UndoMenu>(*ui_->撤消, *ui_->重做, environment_,
                                   [this](const Edit& edit, Way way) { showEdited(edit, way); });
    ui_->menuZhuti->setToolTipsVisible(true);
    picker_ = new PickerBox(*ui_->Text1, *ui_->List1, environment_.stores.main, this);
}

// The left grid is as wide as its columns, and gives way where the right one could not show its
// gains; the user draws the border elsewhere. Both take the height under the fields.
void Form2::arrangeGrids() {
    const GridView& grid = *ui_->MSHFlexGrid1;
    const int space = grid.pixels(gutter) / 3;
    const int scrollBar = 15;
    const int digit = fontMetrics().horizontalAdvance(u'0');
    ui_->Text1->setFixedWidth(16 * digit);
    ui_->Text2->setFixedWidth(22 * digit);
    ui_->Text3->setFixedWidth(8 * digit);
    ui_->tables->setHandleWidth(space);
    ui_->gridRow->setContentsMargins(space, 0, space, space);
    resize(1640, 920);
    ui_->tables->setStretchFactor(1, 1);
    if (!environment_.openWindows.memory().place(*this)) {
        const int themes = grid.pixels(themeGridColumns) + scrollBar;
        const int room = width() - 3 * space;
        const int least = grid.pixels(themeGridToGain) + scrollBar;
        const int left = std::clamp(room - grid.pixels(stockGridToGain) - scrollBar, least, themes);
        ui_->tables->setSizes({left, room - left});
    }
}

void Form2::connectControls() {
    connect(ui_->Command1, &QToolButton::clicked, this, &Form2::Command1_Click);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &Form2::Command1_Click);
    connect(picker_, &PickerBox::chosen, this, &Form2::Command1_Click);
    connect(ui_->Command2, &QToolButton::clicked, this, &Form2::Command2_Click);
    connect(ui_->Text2, &QLineEdit::returnPressed, this, &Form2::Command2_Click);
    connect(ui_->Text3, &QLineEdit::returnPressed, this, &Form2::刷新_Click);
    connect(ui_->Command4, &QToolButton::clicked, this, &Form2::Command4_Click);
    connect(ui_->stopRun, &QPushButton::clicked, this, &Form2::stopQuotes);
    connect(ui_->stopExchange, &QPushButton::clicked, this, [this] { exchangeRun_.stop(); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &Form2::escape);
    connect(ui_->stopSound, &QPushButton::clicked, &alarmDesk_, &AlarmDesk::stopSound);
}

void Form2::connectAlarms() {
    alarmDesk_.setParent(this);
    connect(&alarmDesk_, &AlarmDesk::ticks, this, &Form2::watchTray);
    connect(&alarmDesk_, &AlarmDesk::soundBegins, this, &Form2::showSound);
    connect(&alarmDesk_, &AlarmDesk::soundEnds, ui_->WindowsMediaPlayer1, &QWidget::hide);
    connect(&alarmDesk_, &AlarmDesk::soundEnds, this, [this] { ui_->停止播放->setEnabled(false); });
    connect(ui_->停止播放, &QAction::triggered, &alarmDesk_, &AlarmDesk::stopSound);
    alarmView_ =
        new AlarmView(environment_, windows_, desktop_.notifier, alarmDesk_, *ui_->quotesLine);
    alarmView_->setParent(this);
    marketBand_ = new MarketBand({*ui_->market, *ui_->quotesAge, *ui_->monitoring, *ui_->fillLine},
                                 environment_, alarmDesk_);
    marketBand_->setParent(this);
    dailyBackup_ = std::make_unique<DailyBackup>(
        environment_, [this](const QString& words) { ui_->copyLine->setText(words); });
    dailyBackup_->setParent(this);
    dayBookDesk_ = std::make_unique<DayBookDesk>(
        environment_, [this](const QString& words) { ui_->bookLine->setText(words); });
    dayBookDesk_->setParent(this);
    auto* autoUpdate = new AutoUpdate(*ui_->menuHangqing, environment_.interfaceIniPath(),
                                      environment_.clock, [this] { updateByItself(); });
    autoUpdate->setParent(this);
    auto* looks =
        new LooksMenu(*ui_->menuGongju, environment_.interfaceIniPath(), desktop_.colours);
    looks->setParent(this);
}

void Form2::connectTimers() {
    struct TimerSetting {
        QTimer& timer;
        const char* name;
        int milliseconds;
    };
    for (const TimerSetting& it :
         {TimerSetting{Timer1_, "Timer1", 100}, TimerSetting{Timer4_, "Timer4", 1000},
          TimerSetting{imports_, "imports", 300}}) {
        it.timer.setParent(this);
        it.timer.setObjectName(QString::fromLatin1(it.name));
        it.timer.setInterval(it.milliseconds);
    }
    connect(&Timer1_, &QTimer::timeout, this, &Form2::Timer1_Timer);
    connect(&Timer4_, &QTimer::timeout, this, &Form2::Timer4_Timer);
    imports_.setSingleShot(true);
    connect(&imports_, &QTimer::timeout, this, &Form2::showImported);
}

QWidgetList Form2::exchangeControls() const {
    return {ui_->exchangeName, ui_->exchangeProgress, ui_->stopExchange};
}

void Form2::showExchange(const ShownExchange& run) {
    for (QAction* entry : {ui_->导出数据, ui_->导入新闻和商品, ui_->导入文章}) {
        entry->setEnabled(!run.running);
    }
    for (QWidget* shown : exchangeControls()) {
        shown->setVisible(run.running);
    }
    ui_->exchangeName->setText(u"正在"_s + run.name + u"…"_s);
    showShare(*ui_->exchangeProgress, run.progress.done, run.progress.total, run.timeLeft);
}

void Form2::connectGrids() {
    GridView& themes = *ui_->MSHFlexGrid1;
    GridView& stocks = *ui_->MSHFlexGrid2;
    stocks_.setKeyColumns({2});
    themes.setSortable({u"时间"_s});
    stocks.setSortable({u"日期"_s});
    stocks.shareSortOrder(themes);
    themes.setRowMenu(leftkuaimenu_);
    stocks.setRowMenu(kuaimenu_);
    connect(&themes, &GridView::rowChosen, this, &Form2::MSHFlexGrid1_RowChosen);
    connect(&themes, &GridView::rowClicked, this, &Form2::MSHFlexGrid1_Click);
    connect(&themes, &GridView::rowReached, this, &Form2::MSHFlexGrid1_Click);
    connect(&themes, &GridView::rowDoubleClicked, this, &Form2::MSHFlexGrid1_DblClick);
    connect(&stocks, &GridView::rowChosen, this, &Form2::MSHFlexGrid2_RowChosen);
    connect(&stocks, &GridView::rowDoubleClicked, this, &Form2::MSHFlexGrid2_DblClick);
    connect(&stocks, &GridView::enterPressed, this, &Form2::MSHFlexGrid2_DblClick);
    connect(&kuaimenu_, &QMenu::aboutToShow, this, &Form2::MSHFlexGrid2_MenuOpens);
}

void Form2::Form_Load() {
    loadProgram(environment_.applicationFolder, desktop_.tray, environment_.globals,
                environment_.stores, environment_.clock, [this] { 刷新_Click(); });
    showPractice(*ui_->practiceBand, environment_.services);
    if (!environment_.services.complaints.isEmpty()) {
        environment_.dialogs.tell(environment_.services.complaints.join(u'\n'));
    }
    Timer1_.start();
    Timer4_.start();
    dailyBackup_->start();
    dayBookDesk_->start();
    environment_.historyDesk.start();
    beginning_.start(
        [this](std::stop_token stop) { return askAtTheStart(environment_, windows_, stop); });
}

void Form2::Timer1_Timer() {
    Timer1_.stop();
    beginning_.start([this](std::stop_token stop) { return beginMonitoring(stop); });
}

QCoro::Task<> Form2::beginMonitoring(std::stop_token stop) {
    constexpr std::chrono::milliseconds untilItShows(0);
    const QString caption = windowTitle();
    setWindowTitle(caption + u"   正在更新代码表"_s);
    co_await pause(untilItShows, stop);
    setWindowTitle(caption);
    co_await pause(untilItShows, stop);
    alarmDesk_.start();
}

void Form2::watchTray() {
    if (desktop_.tray.lost()) {
        desktop_.tray.show();
        showMinimized();
    }
}

void Form2::showSound(const QString& file) {
    ui_->停止播放->setEnabled(true);
    ui_->soundFile->setText(QFileInfo(file).fileName());
    ui_->WindowsMediaPlayer1->show();
}

void Form2::Timer4_Timer() {
    Timer4_.stop();
    if (!versionChecks_.running()) {
        versionChecks_.start(
            [this](std::stop_token stop) { return versionCheck_.run(windowTitle(), stop); });
    }
}

// The words of the band are of colours that the sheet has chosen.
void Form2::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && marketBand_) {
        marketBand_->refresh();
    }
}

void Form2::closeEvent(QCloseEvent* event) {
    event->ignore();
    programEnd_.closeMainWindow();
}

// A worker whose run is over may still hold a store, to which the end of the program writes.
QCoro::Task<> Form2::endRuns(std::stop_token stop) {
    restoreRuns_.stop();
    co_await environment_.historyDesk.end(stop);
    co_await endOthers(stop);
}

QCoro::Task<> Form2::endOthers(std::stop_token stop) {
    imports_.stop();
    quoteRuns_.stop();
    versionChecks_.stop();
    exchangeRuns_.stop();
    undoMenu_->stop();
    dailyBackup_->stop();
    dayBookDesk_->stop();
    co_await workersEnded(stop);
}

// Of stores that are others now.
void Form2::showAnew() {
    undoLine_->showLast();
    刷新_Click();
    stockRuns_.stop();
    stockRuns_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const auto step = [this] { themeTable_.refreshStocks(); };
        co_await patiently(step, stop);
    });
}

void Form2::tuopan显示_Click() {
    desktop_.tray.show();
    bringToFront(*this);
}

void Form2::tuopanexit_Click() {
    themeRuns_.stop();
    programEnd_.exit();
}

}  // namespace guanchao
