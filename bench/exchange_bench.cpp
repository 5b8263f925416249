// The export and the two imports of the whole market's themes. The imports begin with an empty
// theme table, which both sides empty within their time.
#include <QHash>
#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <thread>

#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "exchange/backup_export.h"
#include "exchange/store_copy.h"
#include "exchange/text_import.h"
#include "exchange/theme_import.h"
#include "formats/gbk.h"
#include "store/fresh_store.h"
#include "store/held_stores.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The library called in a loop; a connection is made only to open the file by its key.
void bareLoop(Connection& connection, const QStringList& statements) {
    for (const QString& statement : statements) {
        runBare(connection.handle(), statement);
    }
}

const QString themesQuery =
    u"select zhutiname,dm,jc,datetime(ztktime) as ztktime,xiangguandu,guanzhudu from dzhzhuti"_s;
const QString codesQuery = u"select dm,numdm,jc,shenmu,datetime(newdmtime) as newdmtime from dmb"_s;
const QString importTime = u"2026-11-24 10:00:00"_s;

QString quoted(const Recordset& row, int first, int last) {
    QStringList texts;
    for (int field = first; field <= last; ++field) {
        texts << u"'"_s + row.value(field).toText() + u"'"_s;
    }
    return texts.join(u',');
}

// An application folder with all stores, the market's main store among them.
struct Exchange {
    Exchange() {
        QFile::copy(wholeMarket().main.path, stores.main.path);
        createStore(stores.heat.path, stores.heat.key, schemaText(Schema::heat));
        createStore(stores.article.path, stores.article.key, schemaText(Schema::article));
        createStore(stores.backupTemplate.path, stores.backupTemplate.key,
                    schemaText(Schema::backup));
        writeBackup(stores, exports, work);
        library = {exports + u"zhutibackup.ztb"_s, stores.backupKey};
    }

    QStringList exportInserts() const {
        QStringList statements;
        Connection main = stores.main.open();
        for (Recordset row(main, themesQuery); !row.atEnd(); row.moveNext()) {
            statements << u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,xiangguandu,guanzhudu)"
                          u" values("_s +
                              quoted(row, 0, 3) + u","_s + row.value(4).toText() + u","_s +
                              row.value(5).toText() + u")"_s;
        }
        for (Recordset row(main, codesQuery); !row.atEnd(); row.moveNext()) {
            statements << u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values("_s +
                              quoted(row, 0, 4) + u")"_s;
        }
        return statements;
    }

    QStringList libraryImport() const {
        QStringList statements;
        Connection file = library.open();
        for (Recordset row(file, themesQuery); !row.atEnd(); row.moveNext()) {
            statements << u"select zhutiname,dm from dzhzhuti where zhutiname='%1' and dm='%2'"_s
                              .arg(row.value(0).toText(), row.value(1).toText())
                       << u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,xiangguandu,guanzhudu)"
                          u" values("_s +
                              quoted(row, 0, 2) + u",'"_s + importTime + u"',"_s +
                              row.value(4).toText() + u","_s + row.value(5).toText() + u")"_s;
        }
        for (Recordset row(file, codesQuery); !row.atEnd(); row.moveNext()) {
            statements << u"select dm from dmb where  dm='"_s + row.value(0).toText() + u"'"_s;
        }
        return statements;
    }

    // Writes the market's themes as a code-first text file, and gives the statements of its import.
    QStringList textImport(const QString& path) const {
        QStringList statements;
        QHash<QString, QStringList> names;
        Connection main = stores.main.open();
        for (Recordset row(main, themesQuery); !row.atEnd(); row.moveNext()) {
            names[row.value(1).toText()] << row.value(0).toText();
        }
        QString text;
        for (auto it = names.constBegin(); it != names.constEnd(); ++it) {
            text += it.key() + u'\t' + it.value().join(u'\t') + u"\r\n"_s;
            statements << u"select jc from dmb where dm='"_s + it.key() + u"'"_s;
            for (const QString& name : it.value()) {
                statements
                    << u"select zhutiname,dm from dzhzhuti where dm='%1' and zhutiname='%2'"_s.arg(
                           it.key(), name)
                    << u"insert into dzhzhuti(zhutiname,dm,jc,ztktime) values('%1','%2',"
                       u"'某股三字','%3')"_s.arg(name, it.key(), importTime);
            }
        }
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(gbkFromText(text));
        return statements;
    }

    void bareImport(const QStringList& statements) const {
        Connection main = stores.main.open();
        bareLoop(main, {u"delete from dzhzhuti"_s, u"begin immediate"_s});
        bareLoop(main, statements);
        bareLoop(main, {u"commit"_s});
    }

    void emptyThemes() const { stores.main.open().execute(u"delete from dzhzhuti"_s); }

    QTemporaryDir folder;
    QString exports = folder.path() + u'/';
    Stores stores = storesIn(applicationFolder(folder.path()));
    StoreFile library;
    ExchangeWork work{{}, {}};
};

// How long the program holds the store, looked at every half millisecond.
class HeldTime {
public:
    explicit HeldTime(const StoreFile& store)
        : looking_([this, path = store.path] { look(path); }) {}
    // In milliseconds, a run.
    double average(benchmark::IterationCount runs) {
        ended_ = true;
        looking_.join();
        return static_cast<double>(held_.count()) / 1e6 / static_cast<double>(runs);
    }

private:
    void look(const QString& path) {
        for (auto last = std::chrono::steady_clock::now(); !ended_;) {
            std::this_thread::sleep_for(std::chrono::microseconds(500));
            const auto now = std::chrono::steady_clock::now();
            held_ += holderOf(path) ? now - last : std::chrono::nanoseconds(0);
            last = now;
        }
    }

    std::chrono::nanoseconds held_{0};
    std::atomic<bool> ended_ = false;
    std::thread looking_;
};

void exportOfAllThemes(benchmark::State& state) {
    Exchange it;
    const QStringList inserts = it.exportInserts();
    compare(
        state,
        [&] {
            replaceStore(it.library.path, [&](const QString& path) {
                copyFile(it.stores.backupTemplate.path, path);
            });
            Connection main = it.stores.main.open();
            Connection library = it.library.open();
            bareLoop(main, {themesQuery, codesQuery});
            bareLoop(library, {u"begin immediate"_s});
            bareLoop(library, inserts);
            bareLoop(library, {u"commit"_s});
            copyStore(it.stores.article, it.exports + u"/wenzhang.ztb"_s, [] {});
            copyStore(it.stores.heat, it.exports + u"/caijiqi.ztb"_s, [] {});
        },
        [&] { writeBackup(it.stores, it.exports, it.work); });
}
BENCHMARK(exportOfAllThemes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void libraryImportOfAllThemes(benchmark::State& state) {
    Exchange it;
    const QStringList statements = it.libraryImport();
    HeldTime held(it.stores.main);
    compare(
        state,
        [&] {
            Connection library = it.library.open();
            bareLoop(library, {themesQuery, codesQuery});
            it.bareImport(statements);
        },
        [&] {
            it.emptyThemes();
            mergeLibrary(it.stores, it.library.path, importTime, it.work);
        });
    state.counters["held_ms"] = held.average(state.iterations());
}
BENCHMARK(libraryImportOfAllThemes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void textImportOfAllThemes(benchmark::State& state) {
    Exchange it;
    const TextSource source{it.folder.path() + u"/themes.txt"_s, true, u"TAB键"_s, u"TAB键"_s};
    const QStringList statements = it.textImport(source.path);
    HeldTime held(it.stores.main);
    compare(
        state, [&] { it.bareImport(statements); },
        [&] {
            it.emptyThemes();
            mergeText(it.stores, source, importTime, it.work);
        });
    state.counters["held_ms"] = held.average(state.iterations());
}
BENCHMARK(textImportOfAllThemes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

}  // namespace guanchao
