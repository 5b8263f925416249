// What asks services, counts for long or asks the user.
#include "market/quote_run.h"
#include "monitor/monitor_manager.h"
#include "research/selection_scan.h"
#include "research/theme_history.h"
#include "tests/campaign/job_desk.h"
#include "tests/support/fake_alarm_screen.h"

namespace guanchao {

std::map<QString, Run> otherRuns() {
    return {
        // The whole code table.
        {u"quotes"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             QuoteRun run(it.stores, it.clock, it.feed);
             const auto report = [](const QuoteProgress& progress) { print(progress.words()); };
             const QuoteTally tally = co_await run.run(report, stop);
             print(tally.words());
         }},
        // One poll of the monitors, which is due within the minute.
        {u"poll"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             FakeAlarmScreen screen;
             AlarmEngine engine(it.stores, it.globals, it.clock, it.feed, it.failures, screen);
             for (int second = 0; second < 60 && !engine.polling(); ++second) {
                 engine.tick();
             }
             while (engine.polling()) {
                 co_await pause(std::chrono::milliseconds(1), stop);
             }
             print(screen.told.join(u'\n'));
         }},
        {u"scan"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             ResearchRun run([](const ResearchProgress& at) { print(u"days %1"_s.arg(at.done)); });
             SelectionScan scan(it.stores, it.globals, it.dialogs, run,
                                std::make_shared<HistoryShelf>());
             co_await scan.chooseThemes(stop);
         }},
        // The theme of the argument against the market, with its day history.
        {u"history"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             AskedHistory asked;
             ResultGrid grid;
             ThemeHistory themes(it.stores, it.globals, it.clock, it.dialogs,
                                 {{it.client, it.clock, it.services.history}, {it.client, {}}},
                                 asked, grid, [](const ThemeHistoryStep&) {});
             co_await themes.compare(themes.firstDay(), themes.lastDay(), it.argument(), stop);
         }},
        {u"proxies"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> { co_await it.proxies.download(stop); }},
        // THEME CODES
        {u"theme"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             const ThemeFields fields{it.argument(0), it.argument(1), u"3"_s};
             co_await it.editing.add(fields, stop);
         }},
        // THEME NEW_NAME
        {u"rename"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             co_await it.themes.rename(it.argument(), stop);
         }},
        // The same, and what it has written is taken back.
        {u"undo_rename"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
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
         }},
        // THEME NUMBER
        {u"attention"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             co_await it.themes.changeAttention(it.argument(), stop);
         }},
        // THEME
        {u"remove_theme"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             co_await it.themes.removeTheme(it.argument(), stop);
         }},
        {u"clear_monitors"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             FakeClipboard clipboard;
             ResultGrid themes, stocks;
             MonitorManager manager(it.stores, it.globals, it.dialogs, clipboard, it.removals,
                                    themes, stocks);
             co_await manager.clearAll(stop);
         }},
        {u"remove_commodity"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             co_await deleteCommodity(it.stores, it.dialogs, it.removals, it.argument(), stop);
         }},
    };
}

}  // namespace guanchao
