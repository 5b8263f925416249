// What each entry of the menus of Form2 does.
#include <QFileInfo>

#include "app/finder.h"
#include "app/form2.h"
#include "app/maintenance.h"
#include "app/service_line.h"
#include "articles/form27.h"
#include "exchange/article_import.h"
#include "exchange/form3.h"
#include "exchange/form33.h"
#include "exchange/form35.h"
#include "exchange/form_restore.h"
#include "exchange/news_import.h"
#include "exchange/start_page.h"
#include "grid/row_menu.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "market/form11.h"
#include "market/form21.h"
#include "market/form36.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "platform/guide.h"
#include "research/form12.h"
#include "research/form24.h"
#include "research/form32.h"
#include "research/form37.h"
#include "store/failure.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form38.h"
#include "themes/form6.h"
#include "themes/review_window.h"
#include "themes/theme_page.h"
#include "ui_form2.h"
#include "utilities/diagnosis_window.h"
#include "utilities/form28.h"
#include "utilities/form34.h"
#include "utilities/help.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The place of the guide that is named as the window's class; its beginning for the main window.
QString sectionOn(const QWidget* window) {
    if (!window || qobject_cast<const Form2*>(window)) {
        return {};
    }
    const QString name = QString::fromLatin1(window->metaObject()->className());
    return name.section(u"::"_s, -1).toLower();
}

}  // namespace

void Form2::buildMenus() {
    tuopanmenu_.setObjectName(u"tuopanmenu"_s);
    tuopanmenu_.addActions({ui_->tuopan显示, ui_->停止播放, ui_->tuopanexit});
    leftkuaimenu_.setObjectName(u"leftkuaimenu"_s);
    fillRowMenu(leftkuaimenu_,
                {ui_->历史涨幅, ui_->主题页, ui_->添加主题, ui_->修改主题名称, ui_->删除主题,
                 ui_->编辑主题文章, ui_->添加主题监控, ui_->修改关注度, ui_->全删指定只数的主题},
                {ui_->删除主题, ui_->全删指定只数的主题});
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    fillRowMenu(kuaimenu_,
                {ui_->当前行情, ui_->F10资料, ui_->所属全部主题, ui_->deletezhutigu,
                 ui_->addzhutigu, ui_->操作个股文章, ui_->添加个股监控, ui_->修改相关度,
                 ui_->添加到自选股, ui_->从自选股删除},
                {ui_->deletezhutigu, ui_->从自选股删除});
}

void Form2::connectMenus() {
    connectWindows();
    connectCommands();
    connectThemeCommands();
    connectArticles();
    connectExchange();
    connectLaunchers();
    connectHelp();
}

template <typename Form>
void Form2::opens(const QAction* entry) {
    connect(entry, &QAction::triggered, this, [this] { windows_.openAnew<Form>(); });
}

template <typename Form>
void Form2::raisesOrOpens(const QAction* entry) {
    connect(entry, &QAction::triggered, this, [this] { windows_.raiseOrOpen<Form>(); });
}

// What a window of the class stores shows here, while it goes on.
template <typename Form>
void Form2::follows(QWidget* window) {
    if (auto* form = qobject_cast<Form*>(window)) {
        connect(form, &Form::imported, &imports_, qOverload<>(&QTimer::start));
    }
}

void Form2::connectWindows() {
    opens<Form6>(ui_->添加主题);
    opens<Form22>(ui_->所属全部主题);
    opens<Form30>(ui_->自选股);
    opens<Form24>(ui_->主题历史涨幅);
    opens<Form24>(ui_->历史涨幅);
    opens<ThemePage>(ui_->主题页);
    opens<Form12>(ui_->题材历史分析);
    raisesOrOpens<Form38>(ui_->热力图);
    raisesOrOpens<ReviewWindow>(ui_->今日复盘);
    opens<Form21>(ui_->分时数据);
    opens<Form21>(ui_->当前行情);
    opens<Form36>(ui_->K线图);
    opens<Form11>(ui_->F10资料);
    opens<Form4>(ui_->监控管理);
    opens<Form27>(ui_->文章管理器);
    opens<Form3>(ui_->导入主题);
    raisesOrOpens<Form33>(ui_->导入概念板块);
    raisesOrOpens<Form35>(ui_->更新代码表);
    opens<Form25>(ui_->新闻数量分析);
    opens<Form31>(ui_->公司新闻数量分析);
    opens<Form29>(ui_->商品价格监控);
    opens<Form28>(ui_->设置代理服务器);
    opens<Form32>(ui_->历史行情);
    raisesOrOpens<Form37>(ui_->回测实验室);
    raisesOrOpens<Form34>(ui_->行情来源);
    connect(&environment_.openWindows, &OpenWindows::opened, this, [this](QWidget* window) {
        follows<Form3>(window);
        follows<Form33>(window);
        follows<Form35>(window);
        follows<StartPage>(window);
        connectStart(window);
        connectThemeWindows(window);
        if (auto* watchlist = qobject_cast<Form30*>(window)) {
            connect(this, &Form2::tablesChanged, watchlist, &Form30::refresh);
        }
        offerCharts(*window);
    });
    offerCharts(*this);
    auto* serviceLine = new ServiceLine(*ui_->practiceBand, *ui_->serviceLine, environment_,
                                        [this] { windows_.raiseOrOpen<Form34>(); });
    serviceLine->setParent(this);
}

// From every row with a stock, in every window.
void Form2::offerCharts(const QWidget& window) {
    for (GridView* grid : window.findChildren<GridView*>()) {
        grid->offerCharts([this](const QList<StockOfRow>& stocks, qsizetype chosen) {
            windows_.raiseOrOpen<Form36>();
            environment_.openWindows.find<Form36>()->walkThrough(stocks, chosen);
        });
    }
}

template <typename Form>
void Form2::addsMonitor(const QAction* entry) {
    connect(entry, &QAction::triggered, this, [this] {
        environment_.globals.bianjimoshi = 0;
        windows_.openAnew<Form>();
    });
}

void Form2::connectCommands() {
    connect(ui_->刷新, &QAction::triggered, this, &Form2::刷新_Click);
    connect(ui_->刷新2, &QAction::triggered, this, &Form2::刷新_Click);
    connect(ui_->全部显示, &QAction::triggered, this, &Form2::全部显示_Click);
    connect(ui_->gengxin, &QAction::triggered, this, &Form2::Command4_Click);
    connect(ui_->chazhao, &QAction::triggered, this, [this] {
        ui_->Text2->setFocus();
        ui_->Text2->selectAll();
    });
    connect(ui_->快速查找, &QAction::triggered, this, &Form2::快速查找_Click);
    connect(ui_->设置密码, &QAction::triggered, this, &Form2::设置密码_Click);
    addsMonitor<Form8>(ui_->添加主题监控);
    addsMonitor<Form7>(ui_->添加个股监控);
    Globals& globals = environment_.globals;
    connect(ui_->添加到自选股, &QAction::triggered, this, [this, &globals] {
        watchlist_.add(globals.dangqiandm, globals.dangqianjc);
        emit tablesChanged();
    });
    connect(ui_->从自选股删除, &QAction::triggered, this, [this, &globals] {
        watchlist_.remove(globals.dangqiandm, globals.dangqianjc);
        emit tablesChanged();
    });
    connect(ui_->tuopan显示, &QAction::triggered, this, &Form2::tuopan显示_Click);
    connect(ui_->tuopanexit, &QAction::triggered, this, &Form2::tuopanexit_Click);
}

void Form2::设置密码_Click() {
    clearMaintenanceKey(environment_.dialogs);
}

void Form2::快速查找_Click() {
    if (auto* open = findChild<Finder*>()) {
        bringToFront(*open);
        return;
    }
    const Finder::Choices choices = {.stock =
                                         [this](const QString& dm, const QString& jc) {
                                             environment_.globals.dangqiandm = dm;
                                             environment_.globals.dangqianjc = jc;
                                             windows_.openAnew<Form21>();
                                         },
                                     .theme = [this](const QString& name) { showTheme(name); },
                                     .page = [this](const QString& theme) { openPage(theme); }};
    auto* finder = new Finder(environment_, commandsOf(*ui_->menuBar), choices, this);
    environment_.openWindows.adopt(finder);
}

void Form2::showTheme(const QString& name) {
    tuopan显示_Click();
    ui_->Text2->setText(name);
    environment_.globals.dangqianzhuti = name;
    showStocks(name);
}

void Form2::connectThemeCommands() {
    Globals& globals = environment_.globals;
    // The theme is noted: while the question of the command stands, another window may empty the
    // shared one.
    using Command = std::function<QCoro::Task<Redraw>(const QString& theme, std::stop_token stop)>;
    const auto command = [this, &globals](const QAction* entry, const Command& run) {
        connect(entry, &QAction::triggered, this, [this, &globals, run] {
            themeRuns_.start(
                [this, run, theme = globals.dangqianzhuti](std::stop_token stop) -> QCoro::Task<> {
                    const Redraw part = co_await run(theme, stop);
                    redraw(part, theme);
                    undoLine_->showLast();
                });
        });
    };
    command(ui_->修改主题名称, [this](const QString& theme, std::stop_token stop) {
        return themeCommands_.rename(theme, stop);
    });
    command(ui_->删除主题, [this](const QString& theme, std::stop_token stop) {
        return themeCommands_.removeTheme(theme, stop);
    });
    command(ui_->修改关注度, [this](const QString& theme, std::stop_token stop) {
        return themeCommands_.changeAttention(theme, stop);
    });
    command(ui_->全删指定只数的主题, [this](const QString&, std::stop_token stop) {
        return themeCommands_.removeSmallThemes(themes_, stop);
    });
    command(ui_->addzhutigu, [this](const QString& theme, std::stop_token stop) {
        return themeCommands_.addStock(theme, stop);
    });
    command(ui_->修改相关度, [this, &globals](const QString& theme, std::stop_token stop) {
        return themeCommands_.changeRelevance(theme, globals.dangqiandm, stop);
    });
    connect(ui_->deletezhutigu, &QAction::triggered, this, [this, &globals] {
        const QString theme = globals.dangqianzhuti;
        redraw(themeCommands_.removeStock(theme, globals.dangqiandm), theme);
    });
}

void Form2::redraw(Redraw part, const QString& theme) {
    if (part == Redraw::themes) {
        刷新_Click();
    } else {
        if (part == Redraw::stocks) {
            showStocks(theme);
        }
        emit tablesChanged();
    }
}

void Form2::connectArticles() {
    const auto browse = [this](const QString& kind, const QString& value) {
        environment_.globals.wenzhangdalei = kind;
        environment_.globals.wenzhangxiaolei = value;
        windows_.openAnew<Form27>();
    };
    const Globals& globals = environment_.globals;
    connect(ui_->编辑主题文章, &QAction::triggered, this,
            [browse, &globals] { browse(u"主题"_s, globals.dangqianzhuti); });
    connect(ui_->操作个股文章, &QAction::triggered, this,
            [browse, &globals] { browse(u"个股"_s, globals.dangqiandm + globals.dangqianjc); });
}

void Form2::connectExchange() {
    const auto command = [this](const QAction* entry, const Runs::Job& run) {
        connect(entry, &QAction::triggered, this, [this, run] { exchangeRuns_.start(run); });
    };
    connect(ui_->恢复, &QAction::triggered, this, &Form2::恢复_Click);
    command(ui_->导出数据, [this](std::stop_token stop) { return backupExport_.exportData(stop); });
    command(ui_->导入新闻和商品, [this](std::stop_token stop) {
        return importNews(environment_.stores, environment_.dialogs, exchangeRun_, stop);
    });
    command(ui_->导入文章, [this](std::stop_token stop) {
        return importArticles(environment_.stores, environment_.dialogs, exchangeRun_, stop);
    });
}

void Form2::恢复_Click() {
    windows_.openAnew<FormRestore>();
    connect(environment_.openWindows.find<FormRestore>(), &FormRestore::agreed, this,
            &Form2::replaceStores);
}

void Form2::replaceStores(const CopyChoice& choice) {
    restoreRuns_.stop();
    restoreRuns_.start([this, choice](std::stop_token stop) {
        return choice.elsewhere.isEmpty() ? restore(choice, stop) : takeOver(choice, stop);
    });
}

QCoro::Task<> Form2::restore(CopyChoice choice, std::stop_token stop) {
    const QString lack = co_await restoreDesk_.restore(choice, stop);
    if (!lack.isEmpty()) {
        environment_.dialogs.tell(lack);
    }
}

// Where it comes to nothing the page comes again, for another try.
QCoro::Task<> Form2::takeOver(CopyChoice choice, std::stop_token stop) {
    QString why;
    try {
        const QString lack = co_await restoreDesk_.restore(choice, stop);
        why = lack;
    } catch (const std::exception& failure) {
        why = failureText(failure);
    }
    if (!why.isEmpty()) {
        windows_.raiseOrOpen<StartPage>();
        environment_.openWindows.find<StartPage>()->showTakeOverFailure(why);
    }
}

void Form2::connectStart(QWidget* window) {
    if (auto* page = qobject_cast<StartPage*>(window)) {
        connect(page, &StartPage::restoreWanted, this, &Form2::恢复_Click);
        connect(page, &StartPage::takeOverAgreed, this, &Form2::replaceStores);
    }
}

void Form2::connectLaunchers() {
    const auto launcher = [this](QAction* entry, const QList<ShellFolder>& folders) {
        connect(entry, &QAction::triggered, this, [this, folders] {
            const clsShellLink link = startLink();
            for (const ShellFolder it : folders) {
                link.createlnk(it);
            }
        });
    };
    launcher(ui_->建程序快捷方式, {ShellFolder::programs, ShellFolder::startMenu});
    launcher(ui_->建桌面快捷方式, {ShellFolder::desktop});
    launcher(ui_->开机启动, {ShellFolder::startup});
}

// A practice folder has a starter beside the program, which starts the practice market too.
clsShellLink Form2::startLink() const {
    const QString program = environment_.applicationFolder + environment_.executableName;
    const QString starter = program + u"-practice"_s;
    const bool practises = environment_.services.isPractice && QFileInfo::exists(starter);
    return {desktop_.launcherFolders, practises ? starter : program,
            environment_.globals.yingyongmulu,
            practises ? programName + u"（练习）"_s : programName};
}

void Form2::connectHelp() {
    raisesOrOpens<StartPage>(ui_->开始使用);
    connect(ui_->软件初始化, &QAction::triggered, this,
            [this] { tellSetup(environment_.dialogs); });
    connect(ui_->帮助, &QAction::triggered, this, [this] {
        openGuide(environment_.globals.yingyongmulu, sectionOn(QApplication::activeWindow()),
                  environment_.dialogs, environment_.shell);
    });
    connect(ui_->查看新版本, &QAction::triggered, &Timer4_, qOverload<>(&QTimer::start));
    connect(ui_->聚益通, &QAction::triggered, this, [this] {
        openVendorSite(environment_.services.vendor, environment_.dialogs, environment_.shell);
    });
    raisesOrOpens<DiagnosisWindow>(ui_->诊断);
    connect(ui_->关于, &QAction::triggered, this, [this] { tellMaker(environment_.dialogs); });
}

}  // namespace guanchao
