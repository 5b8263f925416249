// campaign_job WORD FOLDER HOST [ARGUMENT ...]: carries out one operation of the program on the
// stores of an application folder, once, at a fixed moment and with a market at HOST for all
// services. Questions are answered with yes and the last argument. Prints what the user is told,
// each committed step of those that tell it, and "done"; a failure goes to the error output in the
// words of the user's box, and the program ends with 1.
#include <QCryptographicHash>
#include <QDirIterator>
#include <QFileInfo>
#include <QTextStream>
#include <map>

#include "articles/article_editor.h"
#include "articles/drafts.h"
#include "exchange/article_import.h"
#include "exchange/backup_export.h"
#include "exchange/board_import.h"
#include "exchange/code_table_update.h"
#include "exchange/news_import.h"
#include "exchange/restore.h"
#include "exchange/store_backup.h"
#include "exchange/store_check.h"
#include "exchange/text_import.h"
#include "exchange/theme_import.h"
#include "heat/collector_contract.h"
#include "heat/commodity_editor.h"
#include "market/quote_run.h"
#include "monitor/monitor_editors.h"
#include "monitor/monitor_manager.h"
#include "platform/qt_http_client.h"
#include "research/selection_scan.h"
#include "research/theme_history.h"
#include "services/services.h"
#include "store/patience.h"
#include "tests/support/fake_alarm_screen.h"
#include "tests/support/fakes.h"
#include "tests/support/outcome_of.h"
#include "themes/day_book.h"
#include "themes/theme_commands.h"
#include "themes/theme_editing.h"
#include "themes/watch_files.h"
#include "themes/watch_order.h"
#include "themes/watchlist.h"
#include "utilities/proxies.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void print(const QString& line) {
    QTextStream(stdout) << line << Qt::endl;
}

struct PrintedFailures : Failures {
    void report(const std::exception& failure) override {
        QTextStream(stderr) << failureText(failure) << Qt::endl;
        any = true;
    }

    bool any = false;
};

class Job {
public:
    using Word = QCoro::Task<> (Job::*)(std::stop_token stop);

    Job(const QString& folder, const QString& host, const QStringList& arguments)
        : folder_(applicationFolder(folder)), arguments_(arguments), services_(services(host)) {
        dialogs_.typed = dialogs_.picked = arguments.isEmpty() ? QString() : arguments.last();
        globals_.yingyongmulu = folder_;
        globals_.jiankongkaiqi = 1;
    }
    ~Job() {
        for (const QString& told : dialogs_.shown) {
            print(told);
        }
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    static std::map<QString, Word> words();

    // As the program does before anything else.
    void begin() {
        finishRestore(stores_, copiesFolder(folder_));
        dropCommitLeftovers(stores_.main, stores_.heat);
    }

private:
    Services services(const QString& host) const {
        Services services = readServices(folder_ + u"services.ini"_s);
        services.vendor.host = host;
        services.quote = services.history = {services.vendor};
        return services;
    }
    // The practice market is of every kind.
    Service listing() const {
        Service service = services_.quote.value(0);
        service.kind = u"sina"_s;
        return service;
    }

    QString argument(int at) const { return arguments_.value(at); }

    // The whole code table.
    QCoro::Task<> quotes(std::stop_token stop) {
        QuoteRun run(stores_, clock_, feed_);
        const auto report = [](const QuoteProgress& it) { print(it.words()); };
        const QuoteTally tally = co_await run.run(report, stop);
        print(tally.words());
    }

    // One poll of the monitors, which is due within the minute.
    QCoro::Task<> poll(std::stop_token stop) {
        FakeAlarmScreen screen;
        AlarmEngine engine(stores_, globals_, clock_, feed_, failures, screen);
        for (int second = 0; second < 60 && !engine.polling(); ++second) {
            engine.tick();
        }
        while (engine.polling()) {
            co_await pause(std::chrono::milliseconds(1), stop);
        }
        print(screen.told.join(u'\n'));
    }

    // Into the folder of the argument.
    QCoro::Task<> exportData(std::stop_token stop) {
        BackupExport exports(stores_, dialogs_, exchange_);
        co_await exports.exportData(stop);
    }

    // The file of the argument.
    QCoro::Task<> importLibrary(std::stop_token stop) {
        co_await themeImport_.importLibrary(argument(0), stop);
    }
    QCoro::Task<> importText(std::stop_token stop) {
        TextImport text(stores_, clock_, dialogs_, exchange_);
        const TextSource source{argument(0), true, u"\t"_s, u"、"_s};
        co_await text.importText(source, stop);
    }
    QCoro::Task<> importArticles(std::stop_token stop) {
        return guanchao::importArticles(stores_, dialogs_, exchange_, stop);
    }
    QCoro::Task<> importNews(std::stop_token stop) {
        return guanchao::importNews(stores_, dialogs_, exchange_, stop);
    }

    QCoro::Task<> importBoards(std::stop_token stop) {
        RunControl control;
        const Boards boards(client_, {listing()});
        const BoardList list = co_await boards.list(BoardSort::regions, stop);
        const BoardImport::Watch watch = {[](const Board&) { return true; },
                                          [](const RunProgress&) {}, [](const BoardOutcome&) {}};
        BoardImport import(stores_, clock_, client_, control, watch);
        const BoardTally tally = co_await import.run(list.service, list.boards, stop);
        print(tally.words());
    }

    QCoro::Task<> updateCodes(std::stop_token stop) {
        RunControl control;
        CodeTableUpdate update(stores_, clock_, client_, {listing()}, folder_ + u"initials.csv"_s,
                               control, [](const RunProgress&) {});
        const CodeTableResult result = co_await update.run(false, stop);
        print(result.words());
    }

    // The copy of the day.
    QCoro::Task<> copy(std::stop_token) {
        makeDailyCopy(stores_, copiesFolder(folder_), clock_.now().date(), freeBytesOn, [] {});
        co_return;
    }

    // The copy that the argument names.
    QCoro::Task<> restore(std::stop_token stop) {
        const auto prepare = [this](ExchangeWork& work) {
            return prepareRestore(stores_, copiesFolder(folder_), {argument(0), allCopied},
                                  clock_.now(), work);
        };
        const std::optional<ReadyStores> ready = co_await exchange_.run(u"恢复"_s, prepare, stop);
        const auto take = [this, &ready] { takeTheirPlace(stores_, *ready); };
        co_await patiently(take, stop);
        dropReady(*ready);
    }

    // All themes.
    QCoro::Task<> remove(std::stop_token stop) { co_await themeImport_.deleteAll(stop); }
    QCoro::Task<> undo(std::stop_token stop) {
        co_await themeImport_.deleteAll(stop);
        print(u"removed"_s);
        if (const std::optional<RemovedRows> rows = removals_.last(importWindowPlace)) {
            const Activity activity(u"撤消删除"_s);
            onceMore([&] { bringBack(*rows); });
            removals_.forget(*rows);
        }
    }

    QCoro::Task<> scan(std::stop_token stop) {
        ResearchRun run([](const ResearchProgress& it) { print(u"days %1"_s.arg(it.done)); });
        SelectionScan scan(stores_, globals_, dialogs_, run, std::make_shared<HistoryShelf>());
        co_await scan.chooseThemes(stop);
    }

    // The theme of the argument against the market, with its day history.
    QCoro::Task<> history(std::stop_token stop) {
        AskedHistory asked;
        ResultGrid grid;
        ThemeHistory themes(stores_, globals_, clock_, dialogs_,
                            {{client_, clock_, services_.history}, {client_, {}}}, asked, grid,
                            [](const ThemeHistoryStep&) {});
        co_await themes.compare(themes.firstDay(), themes.lastDay(), argument(0), stop);
    }

    // A new one of the title of the argument, or the one of the id.
    QCoro::Task<> article(std::stop_token) {
        ArticleEditor editor(stores_, globals_, clock_, dialogs_);
        ArticleFields fields = articleFields(*editor.open());
        editor.add(fields);
        print(u"id "_s + fields.id);
        co_return;
    }
    QCoro::Task<> changeArticle(std::stop_token) {
        ArticleEditor editor(stores_, globals_, clock_, dialogs_);
        ArticleFields fields = articleFields({});
        fields.id = argument(0);
        fields.date = dateTexts(clock_.now().date());
        print(editor.save(fields));
        co_return;
    }
    QCoro::Task<> draft(std::stop_token) {
        const Activity activity(u"保存草稿"_s);
        const ArticleFields fields = articleFields({});
        const QList<LeftDraft> left = leftDrafts(folder_);
        putAside(left.isEmpty() ? newDraftPath(folder_) : left.first().path,
                 {fields, fields, clock_.now()});
        co_return;
    }
    ArticleFields articleFields(ArticleFields fields) const {
        fields.category = u"大类"_s;
        fields.subcategory = u"小类"_s;
        fields.title = u"文章 "_s + argument(0);
        fields.body = argument(0) + u" 内容\n"_s.repeated(20000);
        return fields;
    }

    // As a user who tries it again, since the program still holds what it takes.
    void onceMore(const std::function<void()>& step) {
        try {
            step();
        } catch (const OperationError& failure) {
            failures.report(failure);
            step();
        }
    }

    // THEME CODES
    QCoro::Task<> theme(std::stop_token stop) {
        ThemeEditing themes(stores_, clock_, dialogs_, edits_);
        const ThemeFields fields{argument(0), argument(1), u"3"_s};
        co_await themes.add(fields, stop);
    }
    // THEME NEW_NAME
    QCoro::Task<> rename(std::stop_token stop) { co_await themes_.rename(argument(0), stop); }
    // The same, and what it has written is taken back.
    QCoro::Task<> undoRename(std::stop_token stop) {
        try {
            co_await themes_.rename(argument(0), stop);
        } catch (const OperationError& failure) {
            failures.report(failure);
        }
        print(u"renamed"_s);
        if (const std::optional<Edit> edit = edits_.next(Way::back)) {
            const Activity activity(u"撤消主题修改"_s);
            onceMore([&] { carryOut(*edit, Way::back); });
        }
    }
    QCoro::Task<> dayBook(std::stop_token) {
        writeDay(stores_, clock_.now());
        co_return;
    }
    // THEME NUMBER
    QCoro::Task<> attention(std::stop_token stop) {
        co_await themes_.changeAttention(argument(0), stop);
    }
    // THEME
    QCoro::Task<> removeTheme(std::stop_token stop) {
        co_await themes_.removeTheme(argument(0), stop);
    }
    // CODE
    QCoro::Task<> watch(std::stop_token) {
        Watchlist(stores_, dialogs_, removals_).add(argument(0), u"简称"_s);
        co_return;
    }

    // FILE
    QCoro::Task<> importBlock(std::stop_token) {
        guanchao::importBlock(stores_, argument(0), u"短线"_s);
        co_return;
    }
    // CODES: they become the first of the watchlist.
    QCoro::Task<> moveWatched(std::stop_token) {
        moveInList(stores_, {}, {u"SH600000"_s}, argument(0).split(u','), u"SH600000"_s);
        co_return;
    }

    // On the theme of the argument.
    QCoro::Task<> monitor(std::stop_token) {
        ThemeMonitorEditor editor(stores_, globals_, dialogs_);
        MonitorFields fields = editor.load();
        fields.name = argument(0);
        fields.baojinzhi = u"-50"_s;
        editor.confirm(fields);
        co_return;
    }
    QCoro::Task<> clearMonitors(std::stop_token stop) {
        FakeClipboard clipboard;
        ResultGrid themes;
        ResultGrid stocks;
        MonitorManager manager(stores_, globals_, dialogs_, clipboard, removals_, themes, stocks);
        co_await manager.clearAll(stop);
    }

    QCoro::Task<> commodity(std::stop_token) {
        CommodityEditor(stores_, globals_, dialogs_, removals_)
            .add({argument(0), u"SH600000"_s, u"5"_s}, [](const Commodity&) {});
        co_return;
    }
    QCoro::Task<> removeCommodity(std::stop_token stop) {
        co_await deleteCommodity(stores_, dialogs_, removals_, argument(0), stop);
    }
    // As many changes as the argument says, without a pause: a new commodity, then its attention.
    // As in the program, a store that another holds refuses one, which is then made again.
    QCoro::Task<> edits(std::stop_token) {
        const Connection::BusyTimeout ofAClick(std::chrono::milliseconds(80));
        int refused = 0;
        for (int at = 0; at < argument(0).toInt();) {
            if (edit(at)) {
                ++at;
            } else {
                ++refused;
            }
        }
        dialogs_.shown = {QString::number(refused)};
        co_return;
    }
    bool edit(int at) {
        CommodityEditor editor(stores_, globals_, dialogs_, removals_);
        const Commodity commodity{u"商品%1"_s.arg(at / 2), u"SH600000"_s, QString::number(at)};
        try {
            if (at % 2 == 0) {
                editor.add(commodity, [](const Commodity& it) {
                    throw OperationError(it.name + u" 已经在了"_s);
                });
            } else {
                editor.modify(commodity);
            }
            return true;
        } catch (const StoreError& failure) {
            if (failure.fault() != StoreFault::busy) {
                throw;
            }
            return false;
        }
    }
    // For a run of the collector.
    QCoro::Task<> order(std::stop_token) {
        const Activity activity(u"启动采集程序"_s);
        placeRunOrder(stores_.heat, clock_.now().date());
        co_return;
    }

    QCoro::Task<> proxies(std::stop_token stop) {
        Proxies proxies(stores_, dialogs_, client_, services_.vendor);
        co_await proxies.download(stop);
    }

    // A line for each row of each store below the folder and the folders of the arguments: the
    // store's path, the table, and what the row comes to. Stores must be whole.
    QCoro::Task<> rows(std::stop_token) {
        for (const QString& folder : QStringList{folder_} + arguments_) {
            QDirIterator files(folder, {u"*.mzdat"_s, u"*.ztb"_s}, QDir::Files,
                               QDirIterator::Subdirectories);
            while (files.hasNext()) {
                printRows(files.next());
            }
        }
        co_return;
    }
    void printRows(const QString& path) {
        const QString name = QFileInfo(path).baseName();
        const std::map<QString, QString> keys = {{u"dzhzhuti"_s, {}},
                                                 {u"wenzhang"_s, stores_.article.key},
                                                 {u"caijiqi"_s, stores_.heat.key},
                                                 {u"zhutibackup"_s, stores_.backupKey}};
        const auto key = keys.find(name);
        if (key == keys.end() || path.contains(u".new/"_s)) {
            return;
        }
        requireWhole({path, key->second});
        Connection store(path, key->second);
        for (Recordset table(store, u"select name from sqlite_master where type='table'"_s);
             !table.atEnd(); table.moveNext()) {
            printRows(store, table.value(0).toText());
        }
    }
    static void printRows(Connection& store, const QString& table) {
        QTextStream out(stdout);
        for (Recordset row(store, u"select * from "_s + table); !row.atEnd(); row.moveNext()) {
            QCryptographicHash hash(QCryptographicHash::Md5);
            for (int field = 0; field < row.fieldCount(); ++field) {
                hash.addData(row.value(field).toText().toUtf8().append('\0'));
            }
            out << store.path() << '\t' << table << '\t'
                << QString::fromLatin1(hash.result().toHex().left(16)) << '\n';
        }
        out << store.path() << '\t' << table << "\t\n";
    }

public:
    PrintedFailures failures;

private:
    QString folder_;
    QStringList arguments_;
    Stores stores_ = storesIn(folder_);
    Services services_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    QtHttpClient client_;
    QuoteFeed feed_{stores_, globals_, clock_, QuoteSource(client_, clock_, services_.quote)};
    ExchangeRun exchange_{[](const ShownExchange&) {}};
    Removals removals_{copiesFolder(folder_) + u"撤消/"_s};
    Edits edits_{removals_};
    ThemeImport themeImport_{stores_, clock_, dialogs_, exchange_, removals_, edits_};
    ThemeCommands themes_{stores_, clock_, dialogs_, removals_, edits_};
};

std::map<QString, Job::Word> Job::words() {
    return {{u"quotes"_s, &Job::quotes},
            {u"poll"_s, &Job::poll},
            {u"export"_s, &Job::exportData},
            {u"import_library"_s, &Job::importLibrary},
            {u"import_text"_s, &Job::importText},
            {u"import_articles"_s, &Job::importArticles},
            {u"import_news"_s, &Job::importNews},
            {u"import_boards"_s, &Job::importBoards},
            {u"update_codes"_s, &Job::updateCodes},
            {u"copy"_s, &Job::copy},
            {u"restore"_s, &Job::restore},
            {u"remove"_s, &Job::remove},
            {u"undo"_s, &Job::undo},
            {u"scan"_s, &Job::scan},
            {u"history"_s, &Job::history},
            {u"article"_s, &Job::article},
            {u"change_article"_s, &Job::changeArticle},
            {u"draft"_s, &Job::draft},
            {u"theme"_s, &Job::theme},
            {u"rename"_s, &Job::rename},
            {u"undo_rename"_s, &Job::undoRename},
            {u"day_book"_s, &Job::dayBook},
            {u"attention"_s, &Job::attention},
            {u"remove_theme"_s, &Job::removeTheme},
            {u"watch"_s, &Job::watch},
            {u"import_block"_s, &Job::importBlock},
            {u"move_watched"_s, &Job::moveWatched},
            {u"monitor"_s, &Job::monitor},
            {u"clear_monitors"_s, &Job::clearMonitors},
            {u"commodity"_s, &Job::commodity},
            {u"remove_commodity"_s, &Job::removeCommodity},
            {u"edits"_s, &Job::edits},
            {u"order"_s, &Job::order},
            {u"proxies"_s, &Job::proxies},
            {u"rows"_s, &Job::rows}};
}

}  // namespace

}  // namespace guanchao

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto words = guanchao::Job::words();
    const auto word = words.find(arguments.value(1));
    if (word == words.end() || arguments.size() < 4) {
        QTextStream(stderr) << "usage: campaign_job WORD FOLDER HOST [ARGUMENT ...]\n";
        return 2;
    }
    guanchao::Job job(arguments[2], arguments[3], arguments.mid(4));
    guanchao::Runs runs(job.failures);
    runs.start([&](std::stop_token stop) {
        job.begin();
        return (job.*word->second)(stop);
    });
    guanchao::until([&] { return !runs.running(); });
    if (job.failures.any) {
        return 1;
    }
    QTextStream(stdout) << "done\n";
    return 0;
}
