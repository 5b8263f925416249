#include "store/fresh_store.h"

#include <QFile>
#include <QScopeGuard>
#include <cstdio>

#include "base/files.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString journalOf(const QString& path) {
    return path + u"-journal"_s;
}

void writeFresh(const QString& fresh, const QString& target, const WriteStore& write) {
    removeJournalOf(fresh);
    try {
        write(fresh);
    } catch (const StoreError& failure) {
        // The user knows the file by its own name.
        throw failure.path() == fresh
            ? StoreError(failure.reason(), target, failure.statement(), failure.fault())
            : failure;
    }
}

bool moveOver(const QString& from, const QString& to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

}  // namespace

void replaceStore(const QString& target, const WriteStore& write) {
    FreshFile fresh(target);
    writeFresh(fresh.path(), target, write);
    // An older store that was left half written needs its journal until the new one has its place.
    const QString journal = journalOf(target);
    const QString aside = journal + u".old"_s;
    const bool hadJournal = moveOver(journal, aside);
    auto putBack = qScopeGuard([&] {
        if (hadJournal) {
            moveOver(aside, journal);
        }
    });
    fresh.takePlace();
    putBack.dismiss();
    QFile::remove(aside);
}

void makeStore(const QString& target, const WriteStore& write) {
    if (!QFile::exists(target)) {
        removeJournalOf(target);
    }
    FreshFile fresh(target);
    writeFresh(fresh.path(), target, write);
    fresh.takeFreePlace();
}

void removeJournalOf(const QString& path) {
    QFile::remove(journalOf(path));
}

}  // namespace guanchao
