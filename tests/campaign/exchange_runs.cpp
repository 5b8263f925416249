// What goes out of the stores and comes in as a whole.
#include "exchange/article_import.h"
#include "exchange/board_import.h"
#include "exchange/code_table_update.h"
#include "exchange/earlier_folder.h"
#include "exchange/news_import.h"
#include "exchange/restore.h"
#include "exchange/user_files.h"
#include "store/patience.h"
#include "tests/campaign/job_desk.h"

namespace guanchao {

namespace {

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

}  // namespace

std::map<QString, Run> exchangeRuns() {
    return {
        // Into the folder of the argument.
        {u"export"_s, [](JobDesk& it, Stop stop) { return it.exports.exportData(stop); }},
        // The file of the argument.
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
        {u"import_boards"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             RunControl control;
             const Boards boards(it.client, {it.listing()});
             const BoardList list = co_await boards.list(BoardSort::regions, stop);
             const BoardImport::Watch watch = {[](const Board&) { return true; },
                                               [](const RunProgress&) {},
                                               [](const BoardOutcome&) {}};
             BoardImport import(it.stores, it.clock, it.client, control, watch);
             const BoardTally tally = co_await import.run(list.service, list.boards, stop);
             print(tally.words());
         }},
        {u"update_codes"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             RunControl control;
             CodeTableUpdate update(it.stores, it.clock, it.client, {it.listing()},
                                    it.folder + u"initials.csv"_s, control,
                                    [](const RunProgress&) {});
             const CodeTableResult result = co_await update.run(false, stop);
             print(result.words());
         }},
        // The copy that the argument names.
        {u"restore"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             const CopyChoice choice = {it.argument(), allCopied};
             co_await replaceStores(it, choice, stop);
         }},
        // The folder of the argument.
        {u"take_over"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             const EarlierFolder earlier = lookIntoFolder(it.stores, it.folder, it.argument());
             const CopyChoice choice = earlier.choice();
             const QString kept = co_await replaceStores(it, choice, stop);
             bringUserFiles(earlier.path, it.folder, kept);
         }},
        // All themes.
        {u"remove"_s, [](JobDesk& it, Stop stop) { return it.themeImport.deleteAll(stop); }},
        {u"undo"_s,
         [](JobDesk& it, Stop stop) -> QCoro::Task<> {
             co_await it.themeImport.deleteAll(stop);
             print(u"removed"_s);
             if (const std::optional<RemovedRows> rows = it.removals.last(importWindowPlace)) {
                 const Activity activity(u"撤消删除"_s);
                 it.onceMore([&] { bringBack(*rows); });
                 it.removals.forget(*rows);
             }
         }},
    };
}

}  // namespace guanchao
