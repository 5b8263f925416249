// 新闻数量说明: how the news counts of an item and day were counted. They stand in a table of their
// own, xinwenshuoming, which the collector adds to the heat store with the first note; a row of
// counts without a note was counted on search pages, and each of its counts is whole. Failed
// statements raise StoreError.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <utility>

#include "store/connection.h"
#include "store/row_images.h"

namespace guanchao {

// Whose counts: a row of xinwenshul, gongsixinwen or shophq.
struct NewsRow {
    QString table;
    QString item;  // zhutiname, dm or shopname
    QString day;   // date text
};

struct NewsNote {
    QString laiyuan;  // 来源: the kind of the search service, empty for search pages
    // Whether there were at least so many.
    bool onexian = false;
    bool allxian = false;
    bool zdyxian = false;

    bool operator==(const NewsNote&) const = default;
};

NewsNote readNewsNote(Connection& heat, const NewsRow& row);

// In place of the row's former note.
void writeNewsNote(Connection& heat, const NewsRow& row, const NewsNote& note);

// The notes of an item of the table go with it to its new name.
void renameNotes(Connection& heat, const QString& table, const QString& item, const QString& name);

// The notes of items of the table, for an edit of them.
RowScope notesOf(const QString& table, const QStringList& items);

// By date text and item.
using NewsNotes = QHash<std::pair<QString, QString>, NewsNote>;

// Of a table of counts; `condition` narrows it down by riqi and item.
NewsNotes readNewsNotes(Connection& heat, const QString& table, const QString& condition);

// The condition that leaves each item's last one.
QString latestNotes(const QString& table);

// An order that puts the rows of such a table with a note whose 全部数量 is a lower bound, or
// compares with nothing, behind the others, followed by a comma; empty in a store without notes.
// `key` is the table's column of items.
QString incomparableLast(Connection& heat, const QString& table, const QString& key);

}  // namespace guanchao
