// One short-lived connection to a store file. Each operation makes its own and lets it go; two
// operations never share one. Failures raise StoreError, or OperationError where a transaction of
// this program holds the store.
#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

struct sqlite3;

namespace guanchao {

class Connection {
public:
    // Opens an existing file; an empty key means a plain file. A missing file, a wrong key, a key
    // for a plain file and none for an enciphered one all fail here.
    Connection(const QString& path, const QString& key);

    // Runs one INSERT, UPDATE, DELETE or other statement without a result.
    void execute(const QString& statement);
    // The same for one that takes long: `meanwhile` is called every few milliseconds, though not
    // while the statement waits for a lock, and must leave this connection alone. What it raises
    // undoes the statement, and the transaction that the statement is part of, and is raised here.
    void execute(const QString& statement, const std::function<void()>& meanwhile);
    // The same for any use of this connection.
    void watch(const std::function<void()>& use, const std::function<void()>& meanwhile);

    // Another store file beside this one, under a name of its own, for transactions over both.
    void attach(const QString& path, const QString& key, const QString& name);

    // From now on this only reads: a statement that would write, attach a file or set a pragma is
    // refused. For words that a user has typed into a statement.
    void onlyRead();

    // How many rows the last INSERT, UPDATE or DELETE found.
    int changedRows() const;

    // How long all connections wait for a lock, at least; tests shorten it.
    static void setBusyTimeout(std::chrono::milliseconds timeout);
    static std::chrono::milliseconds busyTimeout();

    // For as long as it lives, those of this thread wait no longer than that.
    class BusyTimeout {
    public:
        explicit BusyTimeout(std::chrono::milliseconds most);
        ~BusyTimeout();
        BusyTimeout(const BusyTimeout&) = delete;
        BusyTimeout& operator=(const BusyTimeout&) = delete;

    private:
        std::optional<std::chrono::milliseconds> outer_;
    };

    sqlite3* handle() const { return handle_.get(); }
    const QString& path() const { return path_; }

private:
    struct Close {
        void operator()(sqlite3* handle) const;
    };

    QString path_;
    std::unique_ptr<sqlite3, Close> handle_;
};

// Begins at construction, with the write lock taken at once; rolls back unless committed.
class Transaction {
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& connection_;
    bool open_ = true;
};

// Makes a table of that name with the columns and the rows that a query gives.
void createTableFromContent(Connection& connection, const QString& name, const QString& query);

// Changes the key of a store file that nothing else has open; an empty key leaves it plain.
// The content is written to a new file beside it, which takes its place only when complete.
void rekey(const QString& path, const QString& oldKey, const QString& newKey);

// Makes a store file from statements; fails if the file is there already.
void createStore(const QString& path, const QString& key, const QString& statements);

}  // namespace guanchao
