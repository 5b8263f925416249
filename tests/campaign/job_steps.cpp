// What is done at once.
#include <QCryptographicHash>
#include <QDirIterator>

#include "articles/article_editor.h"
#include "articles/drafts.h"
#include "exchange/store_backup.h"
#include "exchange/store_check.h"
#include "heat/collector_contract.h"
#include "monitor/monitor_editors.h"
#include "tests/campaign/job_desk.h"
#include "themes/day_book.h"
#include "themes/watch_files.h"
#include "themes/watch_order.h"
#include "themes/watchlist.h"

namespace guanchao {

namespace {

void printTable(Connection& store, const QString& table) {
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

void printStore(const StoreFile& file) {
    requireWhole(file);
    Connection store = file.open();
    for (Recordset table(store, u"select name from sqlite_master where type='table'"_s);
         !table.atEnd(); table.moveNext()) {
        printTable(store, table.value(0).toText());
    }
}

// A line for each row of each store below the folder and the folders of the arguments: the store's
// path, the table, and what the row comes to. Stores must be whole.
void printRows(JobDesk& it) {
    const std::map<QString, QString> keys = {{u"dzhzhuti"_s, {}},
                                             {u"wenzhang"_s, it.stores.article.key},
                                             {u"caijiqi"_s, it.stores.heat.key},
                                             {u"zhutibackup"_s, it.stores.backupKey}};
    for (const QString& folder : QStringList{it.folder} + it.arguments) {
        QDirIterator files(folder, {u"*.mzdat"_s, u"*.ztb"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const auto key = keys.find(QFileInfo(path).baseName());
            if (key != keys.end() && !path.contains(u".new/"_s)) {
                printStore({path, key->second});
            }
        }
    }
}

ArticleFields articleFields(const JobDesk& it, ArticleFields fields) {
    fields.category = u"大类"_s;
    fields.subcategory = u"小类"_s;
    fields.title = u"文章 "_s + it.argument();
    fields.body = it.argument() + u" 内容\n"_s.repeated(20000);
    return fields;
}

// False if another holds the store.
bool isEdited(JobDesk& it, int at) {
    const Commodity commodity{u"商品%1"_s.arg(at / 2), u"SH600000"_s, QString::number(at)};
    try {
        if (at % 2 == 0) {
            it.commodities.add(commodity, [](const Commodity& there) {
                throw OperationError(there.name + u" 已经在了"_s);
            });
        } else {
            it.commodities.modify(commodity);
        }
        return true;
    } catch (const StoreError& failure) {
        if (failure.fault() != StoreFault::busy) {
            throw;
        }
        return false;
    }
}

}  // namespace

std::map<QString, Step> steps() {
    return {
        {u"rows"_s, &printRows},
        // The copy of the day.
        {u"copy"_s,
         [](JobDesk& it) {
             makeDailyCopy(it.stores, copiesFolder(it.folder), it.clock.now().date(), freeBytesOn,
                           [] {});
         }},
        // A new one of the title of the argument, or the one of the id.
        {u"article"_s,
         [](JobDesk& it) {
             ArticleEditor editor(it.stores, it.globals, it.clock, it.dialogs);
             ArticleFields fields = articleFields(it, *editor.open());
             editor.add(fields);
             print(u"id "_s + fields.id);
         }},
        {u"change_article"_s,
         [](JobDesk& it) {
             ArticleEditor editor(it.stores, it.globals, it.clock, it.dialogs);
             ArticleFields fields = articleFields(it, {});
             fields.id = it.argument();
             fields.date = dateTexts(it.clock.now().date());
             print(editor.save(fields));
         }},
        {u"draft"_s,
         [](JobDesk& it) {
             const Activity activity(u"保存草稿"_s);
             const ArticleFields fields = articleFields(it, {});
             const QList<LeftDraft> left = leftDrafts(it.folder);
             putAside(left.isEmpty() ? newDraftPath(it.folder) : left.first().path,
                      {fields, fields, it.clock.now()});
         }},
        {u"day_book"_s, [](JobDesk& it) { writeDay(it.stores, it.clock.now()); }},
        // CODE
        {u"watch"_s,
         [](JobDesk& it) {
             Watchlist(it.stores, it.dialogs, it.removals).add(it.argument(), u"简称"_s);
         }},
        // FILE
        {u"import_block"_s, [](JobDesk& it) { importBlock(it.stores, it.argument(), u"短线"_s); }},
        // CODES: they become the first of the watchlist.
        {u"move_watched"_s,
         [](JobDesk& it) {
             const QStringList moved = it.argument().split(u',');
             moveInList(it.stores, {}, {u"SH600000"_s}, moved, u"SH600000"_s);
         }},
        // On the theme of the argument.
        {u"monitor"_s,
         [](JobDesk& it) {
             ThemeMonitorEditor editor(it.stores, it.globals, it.dialogs);
             MonitorFields fields = editor.load();
             fields.name = it.argument();
             fields.baojinzhi = u"-50"_s;
             editor.confirm(fields);
         }},
        {u"commodity"_s,
         [](JobDesk& it) {
             it.commodities.add({it.argument(), u"SH600000"_s, u"5"_s}, [](const Commodity&) {});
         }},
        // As many changes as the argument says, without a pause: a new commodity, then its
        // attention. As in the program, a store that another holds refuses one, which is then made
        // again.
        {u"edits"_s,
         [](JobDesk& it) {
             const Connection::BusyTimeout ofAClick(std::chrono::milliseconds(80));
             int refused = 0;
             for (int at = 0; at < it.argument().toInt();) {
                 ++(isEdited(it, at) ? at : refused);
             }
             it.dialogs.shown = {QString::number(refused)};
         }},
        // For a run of the collector.
        {u"order"_s,
         [](JobDesk& it) {
             const Activity activity(u"启动采集程序"_s);
             placeRunOrder(it.stores.heat, it.clock.now().date());
         }},
    };
}

}  // namespace guanchao
