#include "store/connection.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <exception>
#include <optional>

#include "base/files.h"
#include "base/values.h"
#include "store/dialect.h"
#include "store/held_stores.h"
#include "store/recordset.h"
#include "store/sqlite.h"
#include "store/standing_cursors.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

std::chrono::milliseconds longestWait = std::chrono::seconds(5);
thread_local std::optional<std::chrono::milliseconds> mostHere;

bool isHeldByThisThread(sqlite3* handle) {
    const QString path = QString::fromUtf8(sqlite3_db_filename(handle, "main"));
    const std::optional<StoreHolder> holder = holderOf(path, handle);
    return holder && holder->ofThisThread;
}

// A process that writes without a pause leaves a store free for moments only. The library's own
// waiting looks for them ten times a second and can miss them all.
int waitForStore(void* handle, int tries) {
    if (tries >= std::min(longestWait, mostHere.value_or(longestWait)).count() ||
        isHeldByThisThread(static_cast<sqlite3*>(handle))) {
        return 0;
    }
    QThread::msleep(1);
    return 1;
}

// Some milliseconds of the library's own steps.
constexpr int stepsBetweenCalls = 20000;

struct Watcher {
    const std::function<void()>& call;
    std::exception_ptr raised;
};

// No exception may pass through the library: it is kept, and ends the statement.
int callWatcher(void* data) {
    auto& watcher = *static_cast<Watcher*>(data);
    try {
        watcher.call();
        return 0;
    } catch (...) {
        watcher.raised = std::current_exception();
        return 1;
    }
}

// The raw form of a key: the library takes it as it stands, where a passphrase would be stretched
// for 27 ms at every opening.
QString rawKey(const QString& key) {
    if (key.isEmpty()) {
        return {};
    }
    const QByteArray digest = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256);
    return u"x'%1'"_s.arg(QString::fromLatin1(digest.toHex()));
}

// Later libraries have another page format; the stores keep the one that every version reads.
void keepFormat(Connection& connection) {
    connection.execute(u"pragma cipher_default_compatibility=3"_s);
}

void giveKey(Connection& connection, const QString& key) {
    if (key.isEmpty()) {
        return;
    }
    keepFormat(connection);
    const QByteArray raw = rawKey(key).toUtf8();
    sqlite3_key(connection.handle(), raw.constData(), static_cast<int>(raw.size()));
}

bool metAFullDisk(sqlite3* handle) {
    const int error = sqlite3_system_errno(handle);
    return error == ENOSPC || error == EDQUOT;
}

StoreFault faultOf(sqlite3* handle) {
    constexpr int primaryCode = 0xff;
    switch (sqlite3_errcode(handle) & primaryCode) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreFault::busy;
        case SQLITE_NOTADB:
            return StoreFault::notADatabase;
        case SQLITE_FULL:
            return StoreFault::full;
        case SQLITE_READONLY:
            return StoreFault::readOnly;
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
            // Of a write alone the library tells that the disk is full.
            return metAFullDisk(handle) ? StoreFault::full : StoreFault::unreadable;
        case SQLITE_CORRUPT:
            return StoreFault::damaged;
        default:
            return StoreFault::other;
    }
}

StoreError lastFailure(sqlite3* handle, const QString& path, const QString& statement) {
    const QString message = QString::fromUtf8(sqlite3_errmsg(handle));
    const QString reason = message.startsWith(u"not authorized") ? u"这里只能查询"_s : message;
    return {reason, path, statement, faultOf(handle)};
}

// No connection is used by two threads at once, so that the library needs no lock around each value
// that it gives: a large history is read value by value.
constexpr int openFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;

sqlite3* openHandle(const QString& path) {
    sqlite3* handle = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &handle, openFlags, nullptr) != SQLITE_OK) {
        const StoreError failure = lastFailure(handle, path, {});
        sqlite3_close(handle);
        throw failure;
    }
    return handle;
}

// Reading and counting; of the functions, those that write or load are left out.
int allowReading(void*, int action, const char*, const char* function, const char*, const char*) {
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_FUNCTION:
            return qstrcmp(function, "sqlcipher_export") == 0 ||
                           qstrcmp(function, "load_extension") == 0
                       ? SQLITE_DENY
                       : SQLITE_OK;
        default:
            return SQLITE_DENY;
    }
}

void makeEmptyFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw notWritten(path, reasonOf(file));
    }
}

// The library's own export can't make indexes over our functions: it takes the built-in ones.
void copyContent(Connection& target, const QString& sourcePath, const QString& sourceKey) {
    target.execute(u"attach "_s + quoted(sourcePath) + u" as source key "_s +
                   quoted(rawKey(sourceKey)));
    Transaction transaction(target);
    const QString made =
        u"select name,sql from source.sqlite_master where sql is not null and"
        u" substr(name,1,7)!='sqlite_' and type"_s;
    for (Recordset tables(target, made + u"='table'"_s); !tables.atEnd(); tables.moveNext()) {
        const QString name = quotedName(tables.value(0).toText());
        target.execute(tables.value(1).toText());
        target.execute(u"insert into main."_s + name + u" select * from source."_s + name);
    }
    for (Recordset others(target, made + u"!='table'"_s); !others.atEnd(); others.moveNext()) {
        target.execute(others.value(1).toText());
    }
    const Recordset version(target, u"pragma source.user_version"_s);
    target.execute(u"pragma user_version="_s + version.value(0).toText());
    transaction.commit();
}

}  // namespace

void Connection::Close::operator()(sqlite3* handle) const {
    forgetConnection(handle);
    sqlite3_close_v2(handle);
}

Connection::Connection(const QString& path, const QString& key) : path_(path) {
    handle_.reset(openHandle(path));
    noteConnection(handle());
    sqlite3_busy_handler(handle(), waitForStore, handle());
    giveKey(*this, key);
    registerDialect(handle());
    // A wrong key shows at the first read only: read here, so that the opening is what fails.
    execute(u"select count(*) from sqlite_master"_s);
}

void Connection::attach(const QString& path, const QString& key, const QString& name) {
    keepFormat(*this);
    execute(u"attach "_s + quoted(path) + u" as "_s + name + u" key "_s + quoted(rawKey(key)));
}

void Connection::onlyRead() {
    execute(u"pragma query_only=on"_s);
    sqlite3_set_authorizer(handle(), allowReading, nullptr);
}

int Connection::changedRows() const {
    return sqlite3_changes(handle());
}

Connection::BusyTimeout::BusyTimeout(std::chrono::milliseconds most) : outer_(mostHere) {
    mostHere = most;
}

Connection::BusyTimeout::~BusyTimeout() {
    mostHere = outer_;
}

std::chrono::milliseconds Connection::busyTimeout() {
    return longestWait;
}

void Connection::setBusyTimeout(std::chrono::milliseconds timeout) {
    longestWait = timeout;
}

void Connection::execute(const QString& statement) {
    const StatementHandle prepared = prepare(*this, statement);
    int step = SQLITE_ROW;
    while (step == SQLITE_ROW) {
        step = sqlite3_step(prepared.get());
    }
    if (step != SQLITE_DONE) {
        raiseLastFailure(*this, statement);
    }
}

void Connection::execute(const QString& statement, const std::function<void()>& meanwhile) {
    watch([&] { execute(statement); }, meanwhile);
}

void Connection::watch(const std::function<void()>& use, const std::function<void()>& meanwhile) {
    Watcher watcher{meanwhile, nullptr};
    sqlite3_progress_handler(handle(), stepsBetweenCalls, callWatcher, &watcher);
    const auto end =
        qScopeGuard([this] { sqlite3_progress_handler(handle(), 0, nullptr, nullptr); });
    try {
        use();
    } catch (const StoreError&) {
        if (watcher.raised) {
            std::rethrow_exception(watcher.raised);
        }
        throw;
    }
}

StatementHandle prepare(const Connection& connection, const QString& statement) {
    const QByteArray text = statement.toUtf8();
    sqlite3_stmt* prepared = nullptr;
    const char* tail = nullptr;
    const int size = static_cast<int>(text.size()) + 1;
    if (sqlite3_prepare_v2(connection.handle(), text.constData(), size, &prepared, &tail) !=
        SQLITE_OK) {
        raiseLastFailure(connection, statement);
    }
    StatementHandle handle(prepared);
    if (!handle || !QByteArray(tail).trimmed().isEmpty()) {
        throw StoreError(u"只能是一条语句，请去掉分号"_s, connection.path(), statement);
    }
    return handle;
}

void raiseLastFailure(const Connection& connection, const QString& statement) {
    sqlite3* handle = connection.handle();
    const std::optional<StoreHolder> holder = holderOf(connection.path(), handle);
    if (!holder || sqlite3_errcode(handle) != SQLITE_BUSY) {
        throw lastFailure(handle, connection.path(), statement);
    }
    if (holder->ofThisThread) {
        throw OperationError(u"正在"_s + holder->activity + u"，请等它结束后再试。"_s);
    }
    throw StoreError(u"另一个任务正在写入"_s, connection.path(), statement, StoreFault::busy,
                     holder->activity);
}

Transaction::Transaction(Connection& connection) : connection_(connection) {
    connection_.execute(u"begin immediate"_s);
    holdStore(connection.path(), connection.handle());
}

Transaction::~Transaction() {
    if (open_) {
        sqlite3_exec(connection_.handle(), "rollback", nullptr, nullptr, nullptr);
        releaseStore(connection_.handle());
    }
}

void Transaction::commit() {
    connection_.execute(u"commit"_s);
    open_ = false;
    releaseStore(connection_.handle());
}

void createTableFromContent(Connection& connection, const QString& name, const QString& query) {
    connection.execute(u"create table "_s + quotedName(name) + u" as "_s + query);
}

void rekey(const QString& path, const QString& oldKey, const QString& newKey) {
    { const Connection readable(path, oldKey); }  // a missing file or a wrong key ends here
    FreshFile fresh(path);
    makeEmptyFile(fresh.path());
    {
        Connection target(fresh.path(), newKey);
        copyContent(target, path, oldKey);
    }
    QFile::setPermissions(fresh.path(), QFileInfo(path).permissions());
    fresh.takePlace();
}

void createStore(const QString& path, const QString& key, const QString& statements) {
    if (QFileInfo::exists(path)) {
        throw StoreError(u"文件已经存在"_s, path, {});
    }
    // A connection makes no file, but takes one of no bytes for a new store, with any key.
    makeEmptyFile(path);
    auto removeFile = qScopeGuard([&] { QFile::remove(path); });
    Connection connection(path, key);
    Transaction transaction(connection);
    const QByteArray text = statements.toUtf8();
    if (sqlite3_exec(connection.handle(), text.constData(), nullptr, nullptr, nullptr) !=
        SQLITE_OK) {
        raiseLastFailure(connection, statements);
    }
    transaction.commit();
    removeFile.dismiss();
}

}  // namespace guanchao
