// What waits: for services, for work that takes long, for an answer of the user.
#include "exchange/article_import.h"
#include "exchange/board_import.h"
#include "exchange/code_table_update.h"
#include "exchange/earlier_folder.h"
#include "exchange/news_import.h"
#include "exchange/restore.h"
#include "exchange/user_files.h"
#include "market/quote_run.h"
#include "monitor/monitor_manager.h"
#include "research/selection_scan.h"
#include "research/theme_history.h"
#include "store/patience.h"
#include "tests/campaign/job_desk.h"
#include "tests/support/fake_alarm_screen.h"

namespace guanchao {

namespace {

// Whatever it comes to.
template <typename T>
QCoro::Task<> ended(QCoro::Task<T> run) {
    [[maybe_unused]] const T result = co_await run;
}

// Gives the folder that keeps what they were.
QCoro::Task<QString> replaceStores(JobDesk& it, CopyChoice choice, Stop stop) {
    const auto prepare = [&it, choice](ExchangeWork& work) {
        return prepareRestore(it.stores, copiesFolder(it.folder), choice, it.clock.now(), work);
    };
    const QString name = choice.activity();
    const std::optional<ReadyStores> ready = co_await it.exchange.run(name, prepare, stop);
    const auto take = [&it, &ready] { takeTheirPlace(it.stores, *ready); };
    co_await patiently(take, stop);
    dropReady(*ready);
    co_return QString(ready->kept);
}

QCoro::Task<> importBoards(JobDesk& it, Stop stop) {
    RunControl control;
    const Boards boards(it.client, {it.listing()});
    const BoardList list = co_await boards.list(BoardSort::regions, stop);
    const BoardImport::Watch watch = {[](const Board&) { return true; }, [](const RunProgress&) {},
                                      [](const BoardOutcome&) {}};
    BoardImport import(it.stores, it.clock, it.client, control, watch);
    const BoardTally tally = co_await import.run(list.service, list.boards, stop);
    print(tally.words());
}

QCoro::Task<> updateCodes(JobDesk& it, Stop stop) {
    RunControl control;
    CodeTableUpdate update(it.stores, it.clock, it.client, {it.listing()},
                           it.folder + u"initials.csv"_s, control, [](const RunProgress&) {});
    const CodeTableResult result = co_await update.run(false, stop);
    print(result.words());
}

QCoro::Task<> takeOver(JobDesk& it, Stop stop) {
    const EarlierFolder earlier = lookIntoFolder(it.stores, it.folder, it.argument());
    const CopyChoice choice = earlier.choice();
    const QString kept = co_await replaceStores(it, choice, stop);
    bringUserFiles(earlier.path, it.folder, kept);
}

QCoro::Task<> removeAndUndo(JobDesk& it, Stop stop) {
    co_await it.themeImport.deleteAll(stop);
    print(u"removed"_s);
    if (const std::optional<RemovedRows> rows = it.removals.last(importWindowPlace)) {
        const Activity activity(u"撤消删除"_s);
        it.onceMore([&] { bringBack(*rows); });
        it.removals.forget(*rows);
    }
}

QCoro::Task<> renameAndUndo(JobDesk& it, Stop stop) {
    try {
        co_await it.themes.rename(it.argument(), stop);
    } catch (const OperationError& failure) {
        it.failures.report(failure);
    }
    print(u"renamed"_s);
    if (const std::optional<Edit> edit = it.edits.next(Way::back)) {
        const Activity activity(u"撤消主题修改"_s);
        it.onceMore([&] { carryOut(*edit, Way::back); });
    }
}

QCoro::Task<> updateQuotes(JobDesk& it, Stop stop) {
    QuoteRun run(it.stores, it.clock, it.feed);
    const auto report = [](const QuoteProgress& progress) { print(progress.words()); };
    const QuoteTally tally = co_await run.run(report, stop);
    print(tally.words());
}

// One poll of the monitors, which is due within the minute.
QCoro::Task<> poll(JobDesk& it, Stop stop) {
    FakeAlarmScreen screen;
    AlarmEngine engine(it.stores, it.globals, it.clock, it.feed, it.failures, screen);
    for (int second = 0; second < 60 && !engine.polling(); ++second) {
        engine.tick();
    }
    while (engine.polling()) {
        co_await pause(std::chrono::milliseconds(1), stop);
    }
    print(screen.told.join(u'\n'));
}

QCoro::Task<> chooseThemes(JobDesk& it, Stop stop) {
    ResearchRun run([](const ResearchProgress& at) { print(u"days %1"_s.arg(at.done)); });
    SelectionScan scan(it.stores, it.globals, it.dialogs, run, std::make_shared<HistoryShelf>());
    co_await scan.chooseThemes(stop);
}

// Against the market, with its day history.
QCoro::Task<> compareTheme(JobDesk& it, Stop stop) {
    AskedHistory asked;
    ResultGrid grid;
    ThemeHistory themes(it.stores, it.globals, it.clock, it.dialogs,
                        {{it.client, it.clock, it.services.history}, {it.client, {}}}, asked, grid,
                        [](const ThemeHistoryStep&) {});
    co_await themes.compare(themes.firstDay(), themes.lastDay(), it.argument(), stop);
}

QCoro::Task<> clearMonitors(JobDesk& it, Stop stop) {
    FakeClipboard clipboard;
    ResultGrid themes, stocks;
    MonitorManager manager(it.stores, it.globals, it.dialogs, clipboard, it.removals, themes,
                           stocks);
    co_await manager.clearAll(stop);
}

}  // namespace

std::map<QString, Run> runs() {
    return {
        // FOLDER/
        {u"export"_s, [](JobDesk& it, Stop stop) { return it.exports.exportData(stop); }},
        // FILE
        {u"import_library"_s,
         [](JobDesk& it, Stop stop) { return it.themeImport.importLibrary(it.argument(), stop); }},
        {u"import_text"_s,
         [](JobDesk& it, Stop stop) {
             return it.textImport.importText({it.argument(), true, u"\t"_s, u"、"_s}, stop);
         }},
        {u"import_articles"_s,
         [](JobDesk& it, Stop stop) {
             return importArticles(it.stores, it.dialogs, it.exchange, stop);
         }},
        {u"import_news"_s,
         [](JobDesk& it, Stop stop) {
             return importNews(it.stores, it.dialogs, it.exchange, stop);
         }},
        {u"import_boards"_s, &importBoards},
        {u"update_codes"_s, &updateCodes},
        // COPY
        {u"restore"_s,
         [](JobDesk& it, Stop stop) {
             return ended(replaceStores(it, {it.argument(), allCopied}, stop));
         }},
        // FOLDER
        {u"take_over"_s, &takeOver},
        // All themes.
        {u"remove"_s, [](JobDesk& it, Stop stop) { return it.themeImport.deleteAll(stop); }},
        {u"undo"_s, &removeAndUndo},
        // The whole code table.
        {u"quotes"_s, &updateQuotes},
        {u"poll"_s, &poll},
        {u"scan"_s, &chooseThemes},
        // THEME
        {u"history"_s, &compareTheme},
        {u"proxies"_s, [](JobDesk& it, Stop stop) { return ended(it.proxies.download(stop)); }},
        // THEME CODES
        {u"theme"_s,
         [](JobDesk& it, Stop stop) {
             return ended(it.editing.add({it.argument(0), it.argument(1), u"3"_s}, stop));
         }},
        // THEME NEW_NAME
        {u"rename"_s,
         [](JobDesk& it, Stop stop) { return ended(it.themes.rename(it.argument(), stop)); }},
        {u"undo_rename"_s, &renameAndUndo},
        // THEME NUMBER
        {u"attention"_s,
         [](JobDesk& it, Stop stop) {
             return ended(it.themes.changeAttention(it.argument(), stop));
         }},
        // THEME
        {u"remove_theme"_s,
         [](JobDesk& it, Stop stop) { return ended(it.themes.removeTheme(it.argument(), stop)); }},
        {u"clear_monitors"_s, &clearMonitors},
        {u"remove_commodity"_s,
         [](JobDesk& it, Stop stop) { return it.commodities.remove(it.argument(), stop); }},
    };
}

}  // namespace guanchao
