#include "store/store_examination.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "base/later.h"
#include "base/log_words.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"
#include "store/sqlite.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds longestForALock(500);

// Those of the schemas, and those that are made with their first row.
QSet<QString> knownTables() {
    QSet<QString> names = {u"xinwenbiaoti"_s, u"xinwenshuoming"_s, u"lishifanwei"_s, u"nishihq2"_s};
    for (const Schema schema :
         {Schema::main, Schema::heat, Schema::article, Schema::pinyin, Schema::backup}) {
        for (const QString& table : tablesOf(schema)) {
            names << table;
        }
    }
    return names;
}

bool isOfStock(const QString& table) {
    static const QRegularExpression code(u"^(SH|SZ|BJ)[0-9]{6}$"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    return code.match(table).hasMatch();
}

QString faultWords(const StoreFile& file, const StoreError& failure) {
    switch (failure.fault()) {
        case StoreFault::busy:
            return failure.holder().isEmpty()
                       ? u"正被其他程序占用，没有检查"_s
                       : u"正在"_s + headOf(failure.holder()) + u"，没有检查"_s;
        case StoreFault::notADatabase:
            return file.key.isEmpty() ? u"已损坏（不是数据库）"_s
                                      : u"已损坏（不是数据库），或者密码不对"_s;
        case StoreFault::damaged:
            return u"已损坏"_s;
        case StoreFault::readOnly:
            return u"只能读取，没有写入的权限"_s;
        case StoreFault::unreadable:
            return u"读不出来，请检查磁盘和访问权限"_s;
        default:
            return u"检查不下去（"_s + loggable(failure.reason()) + u"）"_s;
    }
}

class Examination {
public:
    Examination(const StoreFile& file, std::stop_token stop,
                const std::function<void(qint64)>& show)
        : connection_(file.open()),
          // Of a store with a key the library tells it as a text or a number.
          pageBytes_(qRound64(Recordset(connection_, u"pragma page_size"_s).value(0).toNumber())),
          meanwhile_([this, &show] { show(bytesRead()); }),
          stop_(stop),
          // A look through one large table calls nobody.
          interrupt_(stop_, [this] { sqlite3_interrupt(connection_.handle()); }) {}

    // ok, or the first faults.
    QString soundness() {
        QStringList lines;
        Recordset rows = read(u"pragma integrity_check(5)"_s);
        for (; !rows.atEnd(); rows.moveNext()) {
            lines << rows.value(0).toText().remove(u"*** in database main ***"_s).simplified();
        }
        return lines.join(u'；');
    }

    void count(ExaminedStore& found) {
        const QSet<QString> known = knownTables();
        QStringList tables = tablesIn(connection_);
        tables.sort();
        for (const QString& name : tables) {
            if (known.contains(name)) {
                const Recordset rows = read(u"select count(*) from "_s + name);
                found.tables << ExaminedTable{name, rows.value(0).toInteger()};
            } else {
                ++(isOfStock(name) ? found.stockTables : found.otherTables);
            }
        }
    }

private:
    Recordset read(const QString& statement) {
        endIfStopped(stop_);
        return Recordset(connection_, statement, meanwhile_);
    }

    // Each page that the library hasn't got in memory is read once.
    qint64 bytesRead() const {
        int pages = 0;
        int highest = 0;
        sqlite3_db_status(connection_.handle(), SQLITE_DBSTATUS_CACHE_MISS, &pages, &highest, 0);
        return pages * pageBytes_;
    }

    Connection connection_;
    qint64 pageBytes_;
    std::function<void()> meanwhile_;
    std::stop_token stop_;
    std::stop_callback<std::function<void()>> interrupt_;
};

}  // namespace

ExaminedStore examineStore(const StoreFile& file, std::stop_token stop,
                           const std::function<void(qint64 bytes)>& show) {
    const QFileInfo info(file.path);
    ExaminedStore found;
    if (!info.exists() || info.size() == 0) {
        found.state = info.exists() ? u"是空文件"_s : u"没有这个文件"_s;
        return found;
    }
    const Connection::BusyTimeout brief(longestForALock);
    try {
        Examination examination(file, stop, show);
        const QString soundness = examination.soundness();
        found.isSound = soundness == u"ok"_s;
        found.state = found.isSound ? u"完好"_s : u"已损坏"_s;
        found.faults = found.isSound ? QString() : loggable(soundness);
        examination.count(found);
    } catch (const StoreError& failure) {
        endIfStopped(stop);
        found.isSound = false;
        found.state = found.faults.isEmpty() ? faultWords(file, failure) : found.state;
    } catch (const OperationError& failure) {
        found.isSound = false;
        found.state = headOf(failure.reason());
    }
    return found;
}

QString storeLibraryWords() {
    sqlite3* handle = nullptr;
    sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
    QString cipher;
    const auto take = [](void* words, int, char** values, char**) {
        *static_cast<QString*>(words) = QString::fromUtf8(values[0]);
        return 0;
    };
    sqlite3_exec(handle, "pragma cipher_version", take, &cipher, nullptr);
    sqlite3_close(handle);
    return u"SQLite "_s + QString::fromLatin1(sqlite3_libversion()) + u"，SQLCipher "_s + cipher;
}

}  // namespace guanchao
