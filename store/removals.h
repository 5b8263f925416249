// Deletions of many rows, which can be taken back while the program runs: before rows go, they are
// copied to a small store of their own in a folder, with the key of the store that they are of. Of
// each place (a window) the last deletion comes back first. Failures raise StoreError or
// OperationError. Threads may share one of Removals, which outlives their deletions.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <mutex>
#include <optional>

#include "store/stores.h"
#include "store/way.h"

namespace guanchao {

// The last ones; older ones can't be taken back any more.
inline constexpr int mostRemovals = 20;

// Rows that were deleted, and where they are kept.
struct RemovedRows {
    struct Table {
        QString name;
        QStringList identity;  // columns; a row that is there again by these doesn't come back
    };

    QString place;
    QString words;  // 600 个主题，40000 条
    StoreFile store;
    QString keptIn;
    QList<Table> tables;
    bool isBack = false;  // and may go again
};

// Puts the rows back where they were, behind the others if their places are taken; nothing is kept
// of them any more. In one transaction.
void bringBack(const RemovedRows& rows);

// As bringBack() where nothing of what was deleted is there again, that is no row with the first
// column of a table's identity; the copy stays. False, and nothing comes back, where something is.
bool bringBackWhole(const RemovedRows& rows);
// Deletes what bringBackWhole() has brought back, if that is as it was; false, and nothing goes,
// where it isn't.
bool removeAgain(const RemovedRows& rows);

class Removals {
public:
    // What former runs have left in the folder goes.
    explicit Removals(QString folder);
    ~Removals();
    Removals(const Removals&) = delete;
    Removals& operator=(const Removals&) = delete;

    // The one of the place that comes back first; nothing if there is none.
    std::optional<RemovedRows> last(const QString& place) const;
    // Nothing can be taken back any more.
    void forgetAll();
    // It has come back.
    void forget(const RemovedRows& rows);

    // Whether it can be brought back as a whole, or removed again: its copy is there, and it isn't
    // so already.
    bool canBe(const RemovedRows& rows, Way way) const;
    // It was brought back as a whole, or removed again.
    void mark(const RemovedRows& rows, Way way);

private:
    friend class Removal;

    QString freshFile();
    void add(const RemovedRows& rows);

    QString folder_;
    mutable std::mutex mutex_;  // of what follows
    int made_ = 0;
    QList<RemovedRows> removed_;  // the latest last
};

// A deletion that is being carried out on a connection, which outlives it. Nothing is kept of one
// that isn't completed.
class Removal {
public:
    // Before any transaction.
    Removal(Removals& removals, Connection& connection, const StoreFile& store);
    ~Removal();
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;

    // Keeps the rows of a table that are about to be deleted: all, or those of a condition.
    void keep(const RemovedRows::Table& table, const QString& condition = {});
    // The rows are deleted: they can be taken back by the place. Of rows that are still there
    // nothing is kept. Gives nothing if none is deleted.
    std::optional<RemovedRows> complete(const QString& place, const QString& words);

private:
    bool hasTable(const QString& name) const;

    Removals& removals_;
    Connection& connection_;
    RemovedRows rows_;
};

}  // namespace guanchao
