#include "app/form2.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QScopeGuard>
#include <QScreen>

#include "app/failure.h"
#include "app/looks.h"
#include "app/maintenance.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "articles/form27.h"
#include "exchange/form3.h"
#include "grid/sorting.h"
#include "grid/trapped.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "market/form11.h"
#include "market/form21.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "research/form12.h"
#include "research/form24.h"
#include "store/values.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form6.h"
#include "ui_form2.h"
#include "utilities/form28.h"
#include "utilities/help.h"
#include "utilities/version_check.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Widths and heights in twips.
constexpr int themeGridColumns = 6600;
constexpr int gutter = 250;
constexpr int heightAboveGrids = 1700;

constexpr int alarmRepeats = 20;

}  // namespace

Form2::Form2(Environment& environment, Windows& windows)
    : environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form2>()),
      themeTable_(environment.stores, environment.globals, environment.clock, environment.dialogs,
                  themes_, stocks_),
      themeCommands_(environment.stores, environment.clock, environment.dialogs),
      watchlist_(environment.stores, environment.dialogs),
      quoteFeed_(environment.stores, environment.globals, environment.clock, environment.http,
                 environment.services.quote, environment.pump),
      quoteRun_(environment.stores, environment.clock, quoteFeed_, environment.pump),
      alarmEngine_(
          environment.stores, environment.globals, environment.clock, quoteFeed_,
          [this] { windows_.openAnew<Form4>(); },
          [this](const QString& file) {
              bofangwenjian_ = file;
              if (!Timer3_.isActive()) {
                  Timer3_.start();
              }
          }),
      exchangeRun_(environment.pump, [this](const ExchangeProgress& it) { showExchange(it); }),
      backupExport_(environment.stores, environment.dialogs, exchangeRun_),
      newsImport_(environment.stores, environment.globals, environment.dialogs, exchangeRun_),
      articleImport_(environment.stores, environment.dialogs, exchangeRun_) {
    ui_->setupUi(this);
    ui_->Command1->setIcon(searchIcon());
    ui_->Command2->setIcon(searchIcon());
    ui_->Command4->setIcon(updateIcon());
    ui_->progress->hide();
    ui_->WindowsMediaPlayer1->hide();
    ui_->MSHFlexGrid1->setGrid(themes_);
    ui_->MSHFlexGrid2->setGrid(stocks_);
    ui_->MSHFlexGrid2->setHint(
        u"点左边的一个主题，这里列出它的个股\n\n“主题”菜单的“行情列表”列出全部股票，F9 更新行情"_s);
    picker_ = new PickerBox(
        *ui_->Text1, *ui_->List1, environment_.stores.main,
        [this](int twips) { return ui_->MSHFlexGrid1->pixels(twips); }, this);
    arrangeGrids();
    buildMenus();
    connectControls();
    connectMenus();
    connectThemeCommands();
    connectArticles();
    connectExchange();
    connectHeat();
    connectTools();
    connectGrids();
}

Form2::~Form2() {
    environment_.sound.whenStopped({});
}

// The right grid takes the width beside the left one and the gutter, both take the height under the
// fields; the layout keeps it so at every size.
void Form2::arrangeGrids() {
    const GridView& grid = *ui_->MSHFlexGrid1;
    const int space = grid.pixels(gutter) / 3;
    const int scrollBar = 15;
    ui_->MSHFlexGrid1->setFixedWidth(grid.pixels(themeGridColumns) + scrollBar);
    ui_->gridRow->setSpacing(space);
    ui_->gridRow->setContentsMargins(space, 0, grid.pixels(gutter) - 2 * space, space);
    ui_->fields->setMinimumHeight(grid.pixels(heightAboveGrids) - space);
    resize(QSize(1640, 920).boundedTo(screen()->availableSize()));
}

void Form2::buildMenus() {
    tuopanmenu_.setObjectName(u"tuopanmenu"_s);
    tuopanmenu_.addActions({ui_->tuopan显示, ui_->tuopanexit});
    leftkuaimenu_.setObjectName(u"leftkuaimenu"_s);
    leftkuaimenu_.addActions({ui_->历史涨幅, ui_->添加主题, ui_->修改主题名称, ui_->删除主题,
                              ui_->编辑主题文章, ui_->添加主题监控, ui_->修改关注度,
                              ui_->全删指定只数的主题});
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.addActions({ui_->当前行情, ui_->F10资料, ui_->所属全部主题, ui_->deletezhutigu,
                          ui_->addzhutigu, ui_->操作个股文章, ui_->添加个股监控, ui_->修改相关度,
                          ui_->添加到自选股, ui_->从自选股删除});
}

void Form2::connectControls() {
    connect(ui_->Command1, &QToolButton::clicked, this, &Form2::Command1_Click);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &Form2::Command1_Click);
    connect(picker_, &PickerBox::chosen, this, &Form2::Command1_Click);
    connect(ui_->Command2, &QToolButton::clicked, this, &Form2::Command2_Click);
    connect(ui_->Text2, &QLineEdit::returnPressed, this, &Form2::Command2_Click);
    connect(ui_->Text3, &QLineEdit::returnPressed, this, &Form2::刷新_Click);
    connect(ui_->Command3, &QPushButton::clicked, this,
            [this] { clearMaintenanceKey(environment_.dialogs); });
    connect(ui_->Command4, &QToolButton::clicked, this, &Form2::Command4_Click);
    connect(ui_->gengxin, &QAction::triggered, this, &Form2::Command4_Click);
    connect(ui_->chazhao, &QAction::triggered, this, [this] {
        ui_->Text2->setFocus();
        ui_->Text2->selectAll();
    });
    struct TimerSetting {
        QTimer& timer;
        const char* name;
        int milliseconds;
    };
    for (const TimerSetting& it :
         {TimerSetting{Timer1_, "Timer1", 100}, TimerSetting{Timer2_, "Timer2", 1000},
          TimerSetting{Timer3_, "Timer3", 1000}, TimerSetting{Timer4_, "Timer4", 1000}}) {
        it.timer.setParent(this);
        it.timer.setObjectName(QString::fromLatin1(it.name));
        it.timer.setInterval(it.milliseconds);
    }
    connect(&Timer1_, &QTimer::timeout, this, &Form2::Timer1_Timer);
    connect(&Timer2_, &QTimer::timeout, this, &Form2::Timer2_Timer);
    connect(&Timer3_, &QTimer::timeout, this, &Form2::Timer3_Timer);
    connect(&Timer4_, &QTimer::timeout, this, &Form2::Timer4_Timer);
    connect(ui_->stopSound, &QPushButton::clicked, this, [this] { environment_.sound.stop(); });
    environment_.sound.whenStopped([this] { ui_->WindowsMediaPlayer1->hide(); });
}

void Form2::connectMenus() {
    connect(ui_->刷新, &QAction::triggered, this, &Form2::刷新_Click);
    connect(ui_->刷新2, &QAction::triggered, this, &Form2::刷新_Click);
    connect(ui_->全部显示, &QAction::triggered, this, &Form2::全部显示_Click);
    connect(ui_->主题历史涨幅, &QAction::triggered, this, &Form2::历史涨幅_Click);
    connect(ui_->历史涨幅, &QAction::triggered, this, &Form2::历史涨幅_Click);
    connect(ui_->监控管理, &QAction::triggered, this, &Form2::监控管理_Click);
    connect(ui_->添加主题监控, &QAction::triggered, this, &Form2::添加主题监控_Click);
    connect(ui_->添加个股监控, &QAction::triggered, this, &Form2::添加个股监控_Click);
    connect(ui_->tuopan显示, &QAction::triggered, this, &Form2::tuopan显示_Click);
    connect(ui_->tuopanexit, &QAction::triggered, this, &Form2::tuopanexit_Click);
}

void Form2::connectThemeCommands() {
    Globals& globals = environment_.globals;
    // The theme is noted: while a box of the command stands, an alarm empties the shared one.
    const auto command = [this, &globals](QAction* entry, auto run) {
        connect(entry, &QAction::triggered, this, [this, &globals, run] {
            const QString theme = globals.dangqianzhuti;
            redraw(run(theme), theme);
        });
    };
    command(ui_->修改主题名称,
            [this](const QString& theme) { return themeCommands_.rename(theme); });
    command(ui_->删除主题,
            [this](const QString& theme) { return themeCommands_.removeTheme(theme); });
    command(ui_->修改关注度,
            [this](const QString& theme) { return themeCommands_.changeAttention(theme); });
    command(ui_->全删指定只数的主题,
            [this](const QString&) { return themeCommands_.removeSmallThemes(themes_); });
    command(ui_->addzhutigu,
            [this](const QString& theme) { return themeCommands_.addStock(theme); });
    command(ui_->deletezhutigu, [this, &globals](const QString& theme) {
        return themeCommands_.removeStock(theme, globals.dangqiandm);
    });
    command(ui_->修改相关度, [this, &globals](const QString& theme) {
        return themeCommands_.changeRelevance(theme, globals.dangqiandm);
    });
    connect(ui_->添加到自选股, &QAction::triggered, this,
            [this, &globals] { watchlist_.add(globals.dangqiandm, globals.dangqianjc); });
    connect(ui_->从自选股删除, &QAction::triggered, this,
            [this, &globals] { watchlist_.remove(globals.dangqiandm, globals.dangqianjc); });
    connect(ui_->添加主题, &QAction::triggered, this, [this] { windows_.openAnew<Form6>(); });
    connect(ui_->所属全部主题, &QAction::triggered, this, [this] { windows_.openAnew<Form22>(); });
    connect(ui_->自选股, &QAction::triggered, this, [this] { windows_.openAnew<Form30>(); });
    connect(ui_->题材历史分析, &QAction::triggered, this, [this] { windows_.openAnew<Form12>(); });
    for (QAction* entry : {ui_->分时数据, ui_->当前行情}) {
        connect(entry, &QAction::triggered, this, [this] { windows_.openAnew<Form21>(); });
    }
    connect(ui_->F10资料, &QAction::triggered, this, [this] { windows_.openAnew<Form11>(); });
}

void Form2::connectArticles() {
    const auto browse = [this](const QString& kind, const QString& value) {
        environment_.globals.wenzhangdalei = kind;
        environment_.globals.wenzhangxiaolei = value;
        windows_.openAnew<Form27>();
    };
    const Globals& globals = environment_.globals;
    connect(ui_->文章管理器, &QAction::triggered, this, [this] { windows_.openAnew<Form27>(); });
    connect(ui_->编辑主题文章, &QAction::triggered, this,
            [browse, &globals] { browse(u"主题"_s, globals.dangqianzhuti); });
    connect(ui_->操作个股文章, &QAction::triggered, this,
            [browse, &globals] { browse(u"个股"_s, globals.dangqiandm + globals.dangqianjc); });
}

void Form2::redraw(Redraw part, const QString& theme) {
    if (part == Redraw::themes) {
        刷新_Click();
    } else if (part == Redraw::stocks) {
        themeTable_.xianshizhutigu(theme);
    }
}

void Form2::connectExchange() {
    const auto command = [this](QAction* entry, const std::function<void()>& run) {
        connect(entry, &QAction::triggered, this, [this, run] { runExchange(run); });
    };
    command(ui_->导出数据, [this] { backupExport_.exportData(); });
    command(ui_->导入新闻和商品, [this] { newsImport_.importNews(); });
    command(ui_->导入文章, [this] { articleImport_.importArticles(); });
    connect(ui_->导入主题, &QAction::triggered, this, [this] { windows_.openAnew<Form3>(); });
}

// A shutdown that came in the middle of the command is made up for: the run holds the lock of a
// store, to which the shutdown writes.
void Form2::runExchange(const std::function<void()>& command) {
    const auto endProgramNow = qScopeGuard([this] {
        if (endAfterExchange_) {
            endProgram();
        }
    });
    command();
}

void Form2::showExchange(const ExchangeProgress& progress) {
    for (QAction* entry : {ui_->导出数据, ui_->导入新闻和商品, ui_->导入文章}) {
        entry->setEnabled(!progress.running);
    }
    ui_->progress->setMaximum(progress.total);
    ui_->progress->setValue(progress.done);
    ui_->progress->setVisible(progress.running);
}

void Form2::connectHeat() {
    connect(ui_->新闻数量分析, &QAction::triggered, this, [this] { windows_.openAnew<Form25>(); });
    connect(ui_->公司新闻数量分析, &QAction::triggered, this,
            [this] { windows_.openAnew<Form31>(); });
    connect(ui_->商品价格监控, &QAction::triggered, this, [this] { windows_.openAnew<Form29>(); });
}

void Form2::connectTools() {
    connect(ui_->设置代理服务器, &QAction::triggered, this,
            [this] { windows_.openAnew<Form28>(); });
    const auto launcher = [this](QAction* entry, const QList<ShellFolder>& folders) {
        connect(entry, &QAction::triggered, this, [this, folders] {
            const clsShellLink link(environment_.launcherFolders,
                                    environment_.programFolder + environment_.executableName,
                                    environment_.globals.yingyongmulu);
            for (const ShellFolder it : folders) {
                link.createlnk(it);
            }
        });
    };
    launcher(ui_->建程序快捷方式, {ShellFolder::programs, ShellFolder::startMenu});
    launcher(ui_->建桌面快捷方式, {ShellFolder::desktop});
    launcher(ui_->开机启动, {ShellFolder::startup});
    connect(ui_->软件初始化, &QAction::triggered, this,
            [this] { tellSetup(environment_.dialogs); });
    connect(ui_->帮助, &QAction::triggered, this,
            [this] { openHelp(environment_.globals, environment_.dialogs, environment_.shell); });
    connect(ui_->查看新版本, &QAction::triggered, &Timer4_, qOverload<>(&QTimer::start));
    connect(ui_->聚益通, &QAction::triggered, this, [this] {
        openVendorSite(environment_.services.vendor, environment_.dialogs, environment_.shell);
    });
    connect(ui_->关于, &QAction::triggered, this, [this] { tellMaker(environment_.dialogs); });
}

void Form2::connectGrids() {
    connect(ui_->MSHFlexGrid1, &GridView::gridPressed, this,
            [this](int row, int, Qt::MouseButton button) { MSHFlexGrid1_MouseDown(row, button); });
    connect(ui_->MSHFlexGrid1, &GridView::gridClicked, this, &Form2::MSHFlexGrid1_Click);
    connect(ui_->MSHFlexGrid1, &GridView::gridDoubleClicked, this, &Form2::历史涨幅_Click);
    connect(ui_->MSHFlexGrid2, &GridView::gridPressed, this,
            [this](int row, int, Qt::MouseButton button) { MSHFlexGrid2_MouseDown(row, button); });
    connect(ui_->MSHFlexGrid2, &GridView::gridClicked, this, &Form2::MSHFlexGrid2_Click);
    connect(ui_->MSHFlexGrid2, &GridView::gridDoubleClicked, this, &Form2::MSHFlexGrid2_DblClick);
}

void Form2::Form_Load() {
    tuichubiaozhi_ = 0;
    // A first refresh that fails, on a store that is locked for the moment, must not leave the
    // program without its alarms for the rest of the day.
    const auto enableTimers = qScopeGuard([this] {
        Timer1_.start();
        Timer4_.start();
    });
    loadProgram(environment_.programFolder, environment_.tray, environment_.globals,
                environment_.stores, environment_.clock, [this] { 刷新_Click(); });
}

void Form2::刷新_Click() {
    themeTable_.refresh(ui_->Text3->text(), [this](const UpdateLabels& labels) {
        ui_->Label4->setText(labels.themes);
        ui_->Label6->setText(labels.quotes);
    });
}

void Form2::全部显示_Click() {
    themeTable_.xianshizhutigu(allStocks);
}

void Form2::Command1_Click() {
    picker_->hideList();
    themeTable_.searchByCode(ui_->Text1->text());
}

void Form2::Command2_Click() {
    picker_->hideList();
    themeTable_.searchByName(ui_->Text2->text());
}

void Form2::Command4_Click() {
    if (quoteRun_.running()) {
        return;
    }
    // An import holds the store: a batch would wait for this program's own lock.
    if (environment_.globals.hqmang > 0) {
        environment_.dialogs.tell(u"正在写入数据，请稍后再更新行情。"_s);
        return;
    }
    ui_->Command4->setEnabled(false);
    ui_->gengxin->setEnabled(false);
    if (runQuotes()) {
        environment_.dialogs.tell(u"更新行情数据完成！"_s);
    }
}

// True if the run came to its end; the controls are then as before it, and so they are after a run
// that was cancelled or has failed, with the time label put back.
bool Form2::runQuotes() {
    const QString quoteTime = ui_->Label6->text();
    auto endRun = qScopeGuard([this] {
        ui_->Label1->clear();
        ui_->progress->hide();
        ui_->Command4->setEnabled(true);
        ui_->gengxin->setEnabled(true);
    });
    auto restoreLabel = qScopeGuard([&] { ui_->Label6->setText(quoteTime); });
    if (!quoteRun_.run([this](const QuoteProgress& it) { showProgress(it); })) {
        return false;
    }
    restoreLabel.dismiss();
    刷新_Click();
    return true;
}

void Form2::showProgress(const QuoteProgress& progress) {
    ui_->Label1->clear();
    ui_->progress->setMaximum(progress.total);
    ui_->progress->setValue(progress.updated);
    ui_->progress->show();
    if (progress.updated > 0) {
        ui_->Label6->setText(u"已更新股票只数:"_s + QString::number(progress.updated));
    }
}

void Form2::MSHFlexGrid1_MouseDown(int row, Qt::MouseButton button) {
    if (!themes_.isDataRow(row)) {
        themes_.setToolTipText({});
        return;
    }
    environment_.globals.dangqianzhuti = trimBlanks(themes_.textMatrix(row, 1));
    themes_.setToolTipText(environment_.globals.dangqianzhuti);
    if (button == Qt::RightButton) {
        biaoji(themes_, row);
        leftkuaimenu_.popup(ui_->MSHFlexGrid1->pressPosition());
        picker_->hideList();
    }
}

void Form2::MSHFlexGrid1_Click(int row, int col) {
    trapped([&] {
        picker_->hideList();
        if (row == 0) {
            sortByHeader(themes_, col, {u"时间"_s}, lastSortCode_);
            return;
        }
        themes_.setRedraw(false);
        biaoji(themes_, row);
        ui_->Text2->setText(trimBlanks(themes_.textMatrix(row, 1)));
        themeTable_.xianshizhutigu(ui_->Text2->text());
        themes_.setRedraw(true);
    });
}

void Form2::MSHFlexGrid2_MouseDown(int row, Qt::MouseButton button) {
    if (!stocks_.isDataRow(row)) {
        return;
    }
    environment_.globals.dangqiandm = trimBlanks(stocks_.textMatrix(row, 2));
    environment_.globals.dangqianjc = trimBlanks(stocks_.textMatrix(row, 3));
    picker_->setText(environment_.globals.dangqiandm);
    if (button == Qt::RightButton) {
        biaoji(stocks_, row);
        kuaimenu_.popup(ui_->MSHFlexGrid2->pressPosition());
        picker_->hideList();
    }
}

void Form2::MSHFlexGrid2_Click(int row, int col) {
    trapped([&] {
        if (row == 0) {
            sortByHeader(stocks_, col, {u"日期"_s}, lastSortCode_);
        }
    });
}

void Form2::历史涨幅_Click() {
    windows_.openAnew<Form24>();
}

void Form2::MSHFlexGrid2_DblClick(int row) {
    if (stocks_.isDataRow(row)) {
        windows_.openAnew<Form21>();
    }
}

void Form2::监控管理_Click() {
    windows_.openAnew<Form4>();
}

void Form2::添加主题监控_Click() {
    environment_.globals.bianjimoshi = 0;
    windows_.openAnew<Form8>();
}

void Form2::添加个股监控_Click() {
    environment_.globals.bianjimoshi = 0;
    windows_.openAnew<Form7>();
}

void Form2::Timer1_Timer() {
    Timer1_.stop();
    const QString caption = windowTitle();
    setWindowTitle(caption + u"   正在更新代码表"_s);
    environment_.pump.runPendingEvents();
    setWindowTitle(caption);
    environment_.pump.runPendingEvents();
    Timer2_.start();
}

void Form2::Timer2_Timer() {
    if (environment_.tray.lost()) {
        environment_.tray.show();
        showMinimized();
    }
    alarmEngine_.tick();
}

void Form2::Timer3_Timer() {
    Timer3_.stop();
    environment_.sound.play(bofangwenjian_, alarmRepeats);
    ui_->soundFile->setText(QFileInfo(bofangwenjian_).fileName());
    ui_->WindowsMediaPlayer1->show();
}

void Form2::Timer4_Timer() {
    Timer4_.stop();
    checkVersion(windowTitle(), environment_.globals, environment_.services.vendor,
                 environment_.http, environment_.dialogs, environment_.shell);
}

void Form2::closeEvent(QCloseEvent* event) {
    if (answerClose(tuichubiaozhi_, environment_.dialogs) == CloseAnswer::shutDown) {
        // A window whose user wants to keep unsaved work keeps the program running.
        if (!windows_.closeAll()) {
            tuichubiaozhi_ = 0;
            endAfterRun();
            event->ignore();
            return;
        }
        endProgram();
        event->accept();
    } else {
        event->ignore();
        hideToTray();
    }
}

// A run ends between two of its steps, and its window after it: then the program ends.
void Form2::endAfterRun() {
    if (const QWidget* window = windows_.endingWindow()) {
        connect(window, &QObject::destroyed, this, &Form2::tuopanexit_Click, Qt::QueuedConnection);
    }
}

void Form2::hideToTray() {
    const bool inTray = environment_.tray.hide(environment_.dialogs);
    windows_.closeAll();
    if (inTray) {
        hide();
    } else {
        showMinimized();
    }
}

void Form2::endProgram() {
    quoteRun_.cancel();
    if (exchangeRun_.running()) {
        endAfterExchange_ = true;
        exchangeRun_.cancel();
        windows_.closeAll();
        return;
    }
    shutDown(
        environment_.stores, environment_.executableName, environment_.tray, environment_.processes,
        [this] { windows_.closeAll(); },
        [this](const std::exception& failure) { environment_.dialogs.tell(failureText(failure)); });
}

void Form2::tuopan显示_Click() {
    environment_.tray.show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Form2::tuopanexit_Click() {
    tuichubiaozhi_ = 1;
    close();
}

}  // namespace guanchao
