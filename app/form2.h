// Form2, the main window "观潮台(V3.7)": themes on the left, stocks on the right, and the menus
// from which every other window opens. Tables dzhzhuti, dmb and tempcanshu of the main store, and
// what its commands write; the rules are in ThemeTable, ThemeCommands, Watchlist, QuoteRun,
// AlarmDesk, the export and imports, startup and ProgramEnd.
#pragma once

#include <QMainWindow>
#include <QMenu>
#include <QTimer>
#include <memory>

#include "app/alarm_view.h"
#include "app/daily_backup.h"
#include "app/day_book_desk.h"
#include "app/desktop.h"
#include "app/market_band.h"
#include "app/program_end.h"
#include "app/restore_desk.h"
#include "app/undo_menu.h"
#include "base/runs.h"
#include "exchange/backup_export.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "grid/grid_view.h"
#include "grid/picker_box.h"
#include "grid/result_grid.h"
#include "market/quote_run.h"
#include "monitor/alarm_desk.h"
#include "themes/theme_commands.h"
#include "themes/theme_table.h"
#include "themes/watchlist.h"
#include "utilities/shell_link.h"
#include "utilities/version_check.h"

namespace Ui {
class Form2;
}

namespace guanchao {

class Form2 : public QMainWindow {
    Q_OBJECT

public:
    Form2(Environment& environment, Windows& windows, Desktop desktop);
    ~Form2() override;

    // The program's entry.
    void Form_Load();

    QMenu* tuopanmenu() { return &tuopanmenu_; }
    // 显示: back from the tray.
    void tuopan显示_Click();

signals:
    // The quotes, the themes or the watchlist of the store are others now, and the tables have
    // shown them.
    void tablesChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setUpControls();
    void connectControls();
    void connectTimers();
    void connectAlarms();
    void connectGrids();

    // In form2_menus.cpp.
    void buildMenus();
    void connectMenus();
    void connectWindows();
    void offerCharts(const QWidget& window);
    void connectCommands();
    void connectThemeCommands();
    void connectArticles();
    void connectExchange();
    void connectLaunchers();
    clsShellLink startLink() const;
    void connectHelp();
    template <typename Form>
    void opens(const QAction* entry);
    template <typename Form>
    void raisesOrOpens(const QAction* entry);
    template <typename Form>
    void follows(QWidget* window);
    template <typename Form>
    void addsMonitor(const QAction* entry);

    // In form2_themes.cpp.
    void connectThemeWindows(QWidget* window);
    void openPage(const QString& theme);
    void markTheme(const QString& name);
    void showEdited(const Edit& edit, Way way);

    void watchTray();
    void showSound(const QString& file);
    QWidgetList exchangeControls() const;
    void showExchange(const ShownExchange& run);
    void arrangeGrids();
    QCoro::Task<> refresh(std::stop_token stop);
    QCoro::Task<> refreshShown(std::stop_token stop);
    void showThemesHint();
    QCoro::Task<> refreshTables(std::stop_token stop);
    void showImported();
    void showTimes(const UpdateLabels& times);
    QCoro::Task<> readStocks(QString theme, std::stop_token stop);
    void showStocks(const QString& theme);
    void redraw(Redraw part, const QString& theme);
    QCoro::Task<> updateQuotes(std::stop_token stop);
    QCoro::Task<QuoteTally> runQuotes(std::stop_token stop);
    QCoro::Task<> updateQuietly(std::stop_token stop);
    void updateByItself();
    void showUpdating(bool updating);
    void stopQuotes();
    void escape();
    void showProgress(const QuoteProgress& progress);
    QCoro::Task<> beginMonitoring(std::stop_token stop);
    QCoro::Task<> endOthers(std::stop_token stop);
    QCoro::Task<> endRuns(std::stop_token stop);
    void showAnew();
    void 恢复_Click();
    void replaceStores(const CopyChoice& choice);
    QCoro::Task<> restore(CopyChoice choice, std::stop_token stop);
    QCoro::Task<> takeOver(CopyChoice choice, std::stop_token stop);
    void connectStart(QWidget* window);

    void 刷新_Click();
    void 全部显示_Click();
    void tuopanexit_Click();

    void Command1_Click();
    void Command2_Click();
    void 设置密码_Click();
    void 快速查找_Click();
    void showTheme(const QString& name);
    void Command4_Click();

    void MSHFlexGrid1_RowChosen(int row);
    void MSHFlexGrid1_Click(int row);
    void MSHFlexGrid1_DblClick(int row, int col);
    void MSHFlexGrid2_RowChosen(int row, GridView::By by);
    void MSHFlexGrid2_MenuOpens();
    void MSHFlexGrid2_DblClick(int row);

    void Timer1_Timer();
    void Timer4_Timer();

    Environment& environment_;
    Windows& windows_;
    Desktop desktop_;
    std::unique_ptr<Ui::Form2> ui_;
    ResultGrid themes_;
    ResultGrid stocks_;
    ThemeTable themeTable_;
    ThemeCommands themeCommands_;
    Watchlist watchlist_;
    QuoteFeed quoteFeed_;
    QuoteRun quoteRun_;
    QuoteProgress progress_;  // of its last run
    AlarmDesk alarmDesk_;
    ExchangeRun exchangeRun_;
    BackupExport backupExport_;
    VersionCheck versionCheck_;
    PickerBox* picker_ = nullptr;
    AlarmView* alarmView_ = nullptr;
    MarketBand* marketBand_ = nullptr;

    QMenu tuopanmenu_;
    QMenu leftkuaimenu_;  // 左快捷菜单: on a theme
    QMenu kuaimenu_;      // 快捷菜单: on a stock

    QTimer Timer1_;   // once after the load
    QTimer Timer4_;   // once per version check
    QTimer imports_;  // once after what an import has stored last

    std::unique_ptr<UndoLine> undoLine_;
    std::unique_ptr<UndoMenu> undoMenu_;
    std::unique_ptr<DailyBackup> dailyBackup_;
    std::unique_ptr<DayBookDesk> dayBookDesk_;
    RestoreDesk restoreDesk_{environment_, exchangeRun_,
                             [this](std::stop_token stop) { return endOthers(stop); },
                             [this] { showAnew(); }};

    Runs beginning_{environment_.failures};
    Runs refreshRuns_{environment_.failures};
    Runs stockRuns_{environment_.failures};
    Runs quoteRuns_{environment_.failures};
    Runs versionChecks_{environment_.failures};
    Runs themeRuns_{environment_.failures};
    Runs exchangeRuns_{environment_.failures};
    Runs restoreRuns_{environment_.failures};
    ProgramEnd programEnd_{*this, environment_, desktop_.tray,
                           [this](std::stop_token stop) { return endRuns(stop); }};
};

}  // namespace guanchao
