#include "monitor/monitor_manager.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/tianchongbiao.h"
#include "monitor/poll_list.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Where a table of monitors has the columns that are rewritten for the eye.
struct MonitorColumns {
    int baojinzhi;
    int tanchuform;
    int yinyue;
    QList<int> widths;  // in twips
};

const MonitorColumns themeColumns = {4, 7, 8, {500, 1700, 800, 700, 900, 700, 2000, 1000, 3400}};
const MonitorColumns stockColumns = {
    7, 9, 10, {500, 1100, 1100, 900, 800, 900, 700, 900, 2000, 1000, 3400}};
constexpr int stockAlarmTimeColumn = 8;

QString themesQuery() {
    return u"select  zhutiname as 主题名称,zhangfu as 涨幅,bijiaofu as 比较符,baojinzhi as 报警值,"
           u"guzhishu as 支数,datetime(baojintime) as 报警时间,tanchuform as 窗口提示,"
           u"yinyue as 音乐提示 from zhutijiankong  order by rowid desc"_s;
}

QString stocksQuery() {
    return u"select  dm as 代码,jc as 简称,sp as 收盘,zhangfu as 涨幅,leixin as 比较值,"
           u"bijiaofu as 比较符,baojinzhi as 报警值,datetime(baojintime) as 报警时间,"
           u"tanchuform as 窗口提示,yinyue as 音乐提示 from gegujiankong  order by rowid desc"_s;
}

// With all decimals that it was typed with.
void showThreshold(ResultGrid& grid, int row, int col, const Value& value) {
    const QString text = value.isReal() ? numberText(value.toNumber()) : QString();
    if (text.section(u'.', 1).size() > 2) {
        grid.setTextMatrix(row, col, text);
        grid.setAlignment(row, col, CellAlignment::right);
    }
}

void rewriteRow(ResultGrid& grid, int row, const MonitorColumns& columns) {
    grid.setCellForeColor(row, 1, fallColour);
    const bool silent = grid.textMatrix(row, columns.tanchuform) == u"0"_s;
    grid.setTextMatrix(row, columns.tanchuform, silent ? u"不提示"_s : u"提示"_s);
    if (grid.textMatrix(row, columns.yinyue).size() < 3) {
        grid.setTextMatrix(row, columns.yinyue, u"无音乐"_s);
        grid.setAlignment(row, columns.yinyue, CellAlignment::centre);
    }
}

void fill(Connection& connection, const QString& query, ResultGrid& grid,
          const MonitorColumns& columns) {
    Recordset monitors(connection, query);
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    grid.clear();
    grid.setRows(1);
    grid.setCols(1);
    if (monitors.count() > 0) {
        tianchongbiao(monitors, grid, 1);
        grid.setColWidths(columns.widths);
        monitors.moveFirst();
        for (int row = 1; row < grid.rows(); ++row) {
            showThreshold(grid, row, columns.baojinzhi, monitors.value(u"报警值"));
            rewriteRow(grid, row, columns);
            monitors.moveNext();
        }
    }
}

QString countsOf(Connection& connection) {
    const Recordset counts(connection,
                           u"select (select count(*) from zhutijiankong),"
                           u"(select count(*) from gegujiankong)"_s);
    return counts.value(0).toText() + u" 个主题监控，"_s + counts.value(1).toText() +
           u" 个个股监控"_s;
}

}  // namespace

MonitorManager::MonitorManager(const Stores& stores, Globals& globals, Dialogs& dialogs,
                               Clipboard& clipboard, Removals& removals, ResultGrid& themes,
                               ResultGrid& stocks)
    : stores_(stores),
      globals_(globals),
      dialogs_(dialogs),
      clipboard_(clipboard),
      removals_(removals),
      themes_(themes),
      stocks_(stocks) {}

MonitorManager::Loaded MonitorManager::load() {
    emptySelection();
    Loaded loaded = reload();
    emptySelection();
    return loaded;
}

MonitorManager::Loaded MonitorManager::reload() {
    const Activity activity(u"读取监控列表"_s);
    Loaded loaded;
    {
        Connection connection = stores_.main.open();
        if (const std::optional<Value> frequency = storedFrequency(connection)) {
            loaded.frequency = frequency->toText();
            savedFrequency_ = *loaded.frequency;
        }
        loaded.monitored = u"已监控"_s + QString::number(pollListCount(connection)) + u"只股票。"_s;
        fill(connection, themesQuery(), themes_, themeColumns);
        fill(connection, stocksQuery(), stocks_, stockColumns);
        for (int row = 1; row < stocks_.rows(); ++row) {
            stocks_.setCellForeColor(row, stockAlarmTimeColumn, riseColour);
        }
    }
    return loaded;
}

void MonitorManager::emptySelection() {
    globals_.dangqianzhuti.clear();
    globals_.dangqiandm.clear();
    globals_.dangqianjc.clear();
    themes_.unmark();
    stocks_.unmark();
}

QString MonitorManager::caption() const {
    return globals_.jiankongkaiqi == 1 ? u"监控管理(监控已启动)"_s : u"监控管理(监控未启动)"_s;
}

QString MonitorManager::buttonWords() const {
    return globals_.jiankongkaiqi == 1 ? u"停止监控"_s : u"启动监控"_s;
}

void MonitorManager::toggle(const QDate& today) {
    globals_.jiankongshoudong = today;
    globals_.jiankongkaiqi = globals_.jiankongkaiqi == 1 ? 0 : 1;
}

QString MonitorManager::capacityWords(const QString& frequency) {
    const std::optional<qint16> whole = wholeNumber16(frequency);
    if (!whole) {
        return u"秒监控一次  监控频率太大或太小。"_s;
    }
    return u"秒监控一次  此频率最多监控"_s + QString::number(*whole) + u"只股票。"_s;
}

std::optional<QString> MonitorManager::changeFrequency(const QString& frequency) {
    const Activity activity(u"修改监控频率"_s);
    const QString saved = savedFrequency_;
    const std::optional<qint16> whole = wholeNumber16(frequency);
    if (!whole) {
        dialogs_.tell(u"监控频率要在-32768到32767之间。"_s);
        return saved;
    }
    const QString accepted = QString::number(*whole);
    {
        Connection connection = stores_.main.open();
        if (numericPrefix(trimBlanks(frequency)) >= pollListCount(connection)) {
            connection.execute(u"update tempcanshu set jiankongpinlu="_s + accepted);
            savedFrequency_ = accepted;
            return std::nullopt;
        }
    }
    dialogs_.tell(u"此监控频率最多监控"_s + accepted +
                  u"只股票，请改大监控频率或删除不必要的监控记录。"_s);
    return saved;
}

void MonitorManager::selectTheme(int row) {
    if (!themes_.isDataRow(row)) {
        themes_.setToolTipText({});
        return;
    }
    globals_.dangqianzhuti = trimBlanks(themes_.textMatrix(row, 1));
    themes_.setToolTipText(trimBlanks(themes_.textMatrix(row, themeColumns.yinyue)));
}

void MonitorManager::selectStock(int row) {
    if (!stocks_.isDataRow(row)) {
        stocks_.setToolTipText({});
        return;
    }
    globals_.dangqiandm = trimBlanks(stocks_.textMatrix(row, 1));
    globals_.dangqianjc = trimBlanks(stocks_.textMatrix(row, 2));
    stocks_.setToolTipText(trimBlanks(stocks_.textMatrix(row, stockColumns.yinyue)));
}

QCoro::Task<bool> MonitorManager::clearAll(std::stop_token stop) {
    const bool agreed =
        co_await dialogs_.ask(stop, u"确实要清空全部监控吗？（"_s + countWords() + u"）"_s);
    if (agreed) {
        deleteAll();
    }
    co_return agreed;
}

QString MonitorManager::countWords() const {
    const Activity activity(u"清空监控"_s);
    Connection connection = stores_.main.open();
    return countsOf(connection);
}

void MonitorManager::deleteAll() {
    const Activity activity(u"清空监控"_s);
    Connection connection = stores_.main.open();
    Removal removal(removals_, connection, stores_.main);
    Transaction transaction(connection);
    removal.keep({u"jiankonghq"_s, {u"dm"_s}});
    removal.keep({u"gegujiankong"_s, {}});
    removal.keep({u"zhutijiankong"_s, {}});
    const QString counts = countsOf(connection);
    connection.execute(u"delete from jiankonghq"_s);
    connection.execute(u"delete from gegujiankong"_s);
    connection.execute(u"delete from zhutijiankong"_s);
    transaction.commit();
    removal.complete(monitorWindowPlace, counts);
}

void MonitorManager::deleteTheme() {
    remove(u"主题"_s, globals_.dangqianzhuti,
           u"zhutijiankong where zhutiname="_s + quoted(globals_.dangqianzhuti));
}

void MonitorManager::deleteStock() {
    remove(u"个股"_s, globals_.dangqianjc,
           u"gegujiankong where dm="_s + quoted(globals_.dangqiandm));
}

void MonitorManager::remove(const QString& subject, const QString& name, const QString& monitor) {
    Activity activity(u"删除"_s + subject + u"监控"_s);
    {
        Connection connection = stores_.main.open();
        connection.execute(u"delete from "_s + monitor);
        activity.wrote(u"删除监控记录"_s);
        sweepPollList(connection);
    }
    dialogs_.tell(subject + u'(' + name + u")监控已删除。"_s);
}

void MonitorManager::copyThemeName() {
    clipboard_.setText(globals_.dangqianzhuti);
}

}  // namespace guanchao
