// The further lists beside the watchlist: new, rename, delete, and stocks that go from one to
// another. Tables zixuanzu, zixuanzugu and zixuanshunxu of the main store. Failed statements raise
// StoreError.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/dialogs.h"
#include "store/removals.h"
#include "store/stores.h"

namespace guanchao {

// Why a list can't have the name; empty if it can. `others` are the names that are taken.
QString refusalOfListName(const QString& name, const QStringList& others);

class WatchLists {
public:
    WatchLists(const Stores& stores, Dialogs& dialogs, Removals& removals);

    // As they were made; the watchlist itself is not among them.
    QStringList names() const;

    // Ask for a name; the list as it is called then, nothing if the user gives none or one that is
    // refused.
    QCoro::Task<std::optional<QString>> create(std::stop_token stop);
    QCoro::Task<std::optional<QString>> rename(QString list, std::stop_token stop);

    // Asks first; true if it is gone. Can be taken back.
    QCoro::Task<bool> remove(QString list, std::stop_token stop);

    // In one transaction. Stocks that move leave the first list in any case. Gives words that tell
    // how many came and how many were there before.
    enum class Way : std::uint8_t { copy, move };
    QString transfer(const QStringList& dms, const QString& from, const QString& into, Way way);

private:
    QCoro::Task<std::optional<QString>> askName(QString title, QString offered,
                                                std::stop_token stop);
    qint64 countOf(const QString& list) const;
    void removeList(const QString& list, const QString& words);

    const Stores& stores_;
    Dialogs& dialogs_;
    Removals& removals_;
};

}  // namespace guanchao
