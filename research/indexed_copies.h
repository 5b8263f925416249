// Indexes for a history database that came from elsewhere, has none and is not ours to write: a
// table without the index that its statements need is copied into an indexed temporary table of the
// connection. That has the same name and stands before the file's own in every statement.
#pragma once

#include <QSet>
#include <QString>
#include <functional>

#include "store/connection.h"

namespace guanchao {

class IndexedCopies {
public:
    // A copy may take seconds: `meanwhile` is called before each and every few milliseconds of it.
    // What it raises ends the copying.
    explicit IndexedCopies(
        Connection& history, std::function<void()> meanwhile = [] {});

    // From now on statements on the table use an index that begins with the day, in the file or in
    // a copy. `columns` and `condition` name the part of the table that the statements need. Raises
    // StoreError if the table is not there.
    void coverByDay(const QString& table, const QString& columns,
                    const QString& condition = QStringLiteral("1"));
    // The same for memberships, by code and by theme.
    void coverMemberships();

private:
    QSet<QString> tablesIndexedBy(const QString& term) const;
    void copy(const QString& table, const QString& columns, const QString& condition);
    void index(const QString& table, const QString& name, const QString& terms);

    Connection& history_;
    std::function<void()> meanwhile_;
    QSet<QString> coveredByDay_;
};

}  // namespace guanchao
