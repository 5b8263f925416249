#include "store/removals.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <utility>

#include "base/files.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Without a key of its own an attached file has that of the connection. Its journal may end with
// the program, as its rows do; on the disk it would make the library write a third file for both,
// which nobody takes away if the program is killed.
void attachKept(Connection& connection, const QString& path) {
    connection.execute(u"attach "_s + quoted(path) + u" as kept"_s);
    const Recordset mode(connection, u"pragma kept.journal_mode=memory"_s);
}

bool has(Connection& connection, const QString& rows) {
    return Recordset(connection, u"select exists(select 1 from "_s + rows + u')')
               .value(0)
               .toInteger() == 1;
}

QString isThereAgain(const RemovedRows::Table& table) {
    QStringList same;
    for (const QString& column : table.identity) {
        same << u"there."_s + column + u"=gone."_s + column;
    }
    return u"exists(select 1 from main."_s + table.name + u" there where "_s +
           same.join(u" and "_s) + u')';
}

void insertRows(Connection& connection, const RemovedRows::Table& table) {
    const QString kept = u"kept."_s + table.name + u" gone"_s;
    const QString columns = columnsOf(connection, table.name).join(u',');
    const bool placesTaken = has(
        connection, kept + u" join main."_s + table.name + u" taken on taken.rowid=kept_rowid"_s);
    const QString into = placesTaken ? columns : u"rowid,"_s + columns;
    const QString from = placesTaken ? columns : u"kept_rowid,"_s + columns;
    const QString missing =
        table.identity.isEmpty() ? QString() : u" where not "_s + isThereAgain(table);
    connection.execute(u"insert into main."_s + table.name + u'(' + into + u") select "_s + from +
                       u" from "_s + kept + missing + u" order by kept_rowid"_s);
}

// By the first column of its identity: all that bear the name of what was deleted.
QString ofTheSame(const RemovedRows::Table& table) {
    const QString& name = table.identity.first();
    return u" from main."_s + table.name + u" where "_s + name + u" in (select "_s + name +
           u" from kept."_s + table.name + u')';
}

// Which of two sets of rows has one that the other lacks is found by their numbers too: except
// counts equal rows once.
bool isAsKept(Connection& connection, const RemovedRows::Table& table) {
    const QString columns = columnsOf(connection, table.name).join(u',');
    const QString now = u"select "_s + columns + ofTheSame(table);
    const QString kept = u"select "_s + columns + u" from kept."_s + table.name;
    const Recordset counts(connection, u"select (select count(*) from ("_s + now +
                                           u")),(select count(*) from ("_s + kept + u"))"_s);
    return counts.value(0).toInteger() == counts.value(1).toInteger() &&
           !has(connection, u'(' + now + u" except "_s + kept + u')') &&
           !has(connection, u'(' + kept + u" except "_s + now + u')');
}

}  // namespace

bool bringBackWhole(const RemovedRows& rows) {
    Connection connection = rows.store.open();
    attachKept(connection, rows.keptIn);
    Transaction transaction(connection);
    for (const RemovedRows::Table& table : rows.tables) {
        if (has(connection, u"(select 1"_s + ofTheSame(table) + u')')) {
            return false;
        }
        insertRows(connection, table);
    }
    transaction.commit();
    return true;
}

bool removeAgain(const RemovedRows& rows) {
    Connection connection = rows.store.open();
    attachKept(connection, rows.keptIn);
    Transaction transaction(connection);
    for (const RemovedRows::Table& table : rows.tables) {
        if (!isAsKept(connection, table)) {
            return false;
        }
        connection.execute(u"delete"_s + ofTheSame(table));
    }
    transaction.commit();
    return true;
}

void bringBack(const RemovedRows& rows) {
    Connection connection = rows.store.open();
    attachKept(connection, rows.keptIn);
    Transaction transaction(connection);
    for (const RemovedRows::Table& table : rows.tables) {
        insertRows(connection, table);
        connection.execute(u"delete from kept."_s + table.name);
    }
    transaction.commit();
}

Removals::Removals(QString folder) : folder_(std::move(folder)) {
    QDir(folder_).removeRecursively();
}

Removals::~Removals() {
    forgetAll();
}

void Removals::forgetAll() {
    const std::scoped_lock lock(mutex_);
    for (const RemovedRows& rows : removed_) {
        QFile::remove(rows.keptIn);
    }
    removed_.clear();
}

std::optional<RemovedRows> Removals::last(const QString& place) const {
    const std::scoped_lock lock(mutex_);
    const auto found =
        std::find_if(removed_.crbegin(), removed_.crend(),
                     [&](const RemovedRows& it) { return it.place == place && !it.isBack; });
    return found == removed_.crend() ? std::nullopt : std::optional(*found);
}

void Removals::forget(const RemovedRows& rows) {
    const std::scoped_lock lock(mutex_);
    removed_.removeIf([&](const RemovedRows& it) { return it.keptIn == rows.keptIn; });
    QFile::remove(rows.keptIn);
}

bool Removals::canBe(const RemovedRows& rows, Way way) const {
    const std::scoped_lock lock(mutex_);
    const bool isBack = way == Way::again;
    return std::any_of(removed_.cbegin(), removed_.cend(), [&](const RemovedRows& it) {
        return it.keptIn == rows.keptIn && it.isBack == isBack;
    });
}

void Removals::mark(const RemovedRows& rows, Way way) {
    const std::scoped_lock lock(mutex_);
    for (RemovedRows& it : removed_) {
        if (it.keptIn == rows.keptIn) {
            it.isBack = way == Way::back;
        }
    }
}

QString Removals::freshFile() {
    const std::scoped_lock lock(mutex_);
    makeFolder(folder_);
    return folder_ + QString::number(++made_) + u".mzdat"_s;
}

void Removals::add(const RemovedRows& rows) {
    const std::scoped_lock lock(mutex_);
    removed_ << rows;
    if (removed_.size() > mostRemovals) {
        QFile::remove(removed_.takeFirst().keptIn);
    }
}

Removal::Removal(Removals& removals, Connection& connection, const StoreFile& store)
    : removals_(removals), connection_(connection) {
    rows_.store = store;
    rows_.keptIn = removals_.freshFile();
    replaceFile(rows_.keptIn, {});
    attachKept(connection_, rows_.keptIn);
}

Removal::~Removal() {
    if (rows_.place.isEmpty()) {
        QFile::remove(rows_.keptIn);
    }
}

void Removal::keep(const RemovedRows::Table& table, const QString& condition) {
    const QString from =
        u" select rowid as kept_rowid,* from main."_s + table.name + u' ' + condition;
    if (hasTable(table.name)) {
        connection_.execute(u"insert into kept."_s + table.name + from);
    } else {
        connection_.execute(u"create table kept."_s + table.name + u" as"_s + from);
        rows_.tables << table;
    }
}

bool Removal::hasTable(const QString& name) const {
    return std::any_of(rows_.tables.cbegin(), rows_.tables.cend(),
                       [&](const RemovedRows::Table& it) { return it.name == name; });
}

std::optional<RemovedRows> Removal::complete(const QString& place, const QString& words) {
    bool any = false;
    for (const RemovedRows::Table& table : rows_.tables) {
        connection_.execute(u"delete from kept."_s + table.name +
                            u" where kept_rowid in (select rowid from main."_s + table.name + u')');
        any = any || has(connection_, u"kept."_s + table.name);
    }
    if (!any) {
        return std::nullopt;
    }
    rows_.place = place;
    rows_.words = words;
    removals_.add(rows_);
    return rows_;
}

}  // namespace guanchao
