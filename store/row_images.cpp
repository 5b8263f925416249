#include "store/row_images.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "base/values.h"
#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString besideSchema = u"beside"_s;

QString nameOf(const QString& schema, const RowScope& scope) {
    return schema + u'.' + scope.table;
}

bool sameValues(const RowImage& one, const RowImage& other) {
    return one.values == other.values;
}

// Rows that stay are known by their place; others may have had to move.
bool areAs(const RowImages& now, const RowImages& left, const RowScope& scope) {
    return scope.column.isEmpty()
               ? std::equal(now.cbegin(), now.cend(), left.cbegin(), left.cend(), sameValues)
               : now == left;
}

bool anyPlaceTaken(Connection& connection, const QString& name, const RowImages& images) {
    return std::any_of(images.cbegin(), images.cend(), [&](const RowImage& it) {
        return Recordset(connection, u"select 1 from "_s + name + u" where rowid="_s +
                                         QString::number(it.rowid))
                   .count() > 0;
    });
}

void putColumn(Connection& connection, const QString& name, const RowScope& scope,
               const RowImages& wanted) {
    for (const RowImage& it : wanted) {
        connection.execute(u"update "_s + name + u" set "_s + scope.column + u'=' + it.values +
                           u" where rowid="_s + QString::number(it.rowid));
    }
}

void putRows(Connection& connection, const QString& schema, const RowScope& scope,
             const RowImages& wanted) {
    const QString name = nameOf(schema, scope);
    const QString columns = columnsOf(connection, scope.table, schema).join(u',');
    connection.execute(u"delete from "_s + name + scope.condition);
    const bool goBehind = anyPlaceTaken(connection, name, wanted);
    for (const RowImage& it : wanted) {
        const QString place = goBehind ? QString() : QString::number(it.rowid) + u',';
        connection.execute(u"insert into "_s + name + (goBehind ? u"("_s : u"(rowid,"_s) + columns +
                           u") values("_s + place + it.values + u')');
    }
}

bool exchange(Connection& connection, const QString& schema, const EditedRows& edited, Way way) {
    const RowImages& left = way == Way::back ? edited.after : edited.before;
    const RowImages& wanted = way == Way::back ? edited.before : edited.after;
    if (!areAs(readImages(connection, schema, edited.scope), left, edited.scope)) {
        return edited.scope.isScratch;
    }
    if (edited.scope.column.isEmpty()) {
        putRows(connection, schema, edited.scope, wanted);
    } else {
        putColumn(connection, nameOf(schema, edited.scope), edited.scope, wanted);
    }
    return true;
}

}  // namespace

RowImages readImages(Connection& connection, const QString& schema, const RowScope& scope) {
    RowImages images;
    if (!hasTable(connection, scope.table, schema)) {
        return images;
    }
    QStringList words;
    const QStringList columns = scope.column.isEmpty() ? columnsOf(connection, scope.table, schema)
                                                       : QStringList(scope.column);
    for (const QString& column : columns) {
        words << u"quote("_s + column + u')';
    }
    for (Recordset row(connection, u"select rowid,"_s + words.join(u"||','||"_s) + u" from "_s +
                                       nameOf(schema, scope) + scope.condition +
                                       u" order by rowid"_s);
         !row.atEnd(); row.moveNext()) {
        images << RowImage{row.value(0).toInteger(), row.value(1).toText()};
    }
    return images;
}

bool exchangeRows(const QList<EditedRows>& edited, Way way) {
    const StoreFile& first = edited.first().store;
    Connection connection = first.open();
    const auto beside = std::find_if(edited.cbegin(), edited.cend(), [&](const EditedRows& it) {
        return it.store.path != first.path;
    });
    if (beside != edited.cend()) {
        connection.attach(beside->store.path, beside->store.key, besideSchema);
    }
    Transaction transaction(connection);
    for (const EditedRows& it : edited) {
        const QString schema = it.store.path == first.path ? u"main"_s : besideSchema;
        if (!exchange(connection, schema, it, way)) {
            return false;
        }
    }
    transaction.commit();
    return true;
}

void dropCommitLeftovers(const StoreFile& first, const StoreFile& beside) {
    const QFileInfo file(first.path);
    const QStringList left = file.dir().entryList({file.fileName() + u"-mj*"_s}, QDir::Files);
    if (left.isEmpty()) {
        return;
    }
    try {
        Connection connection = first.open();
        connection.attach(beside.path, beside.key, besideSchema);
        const Transaction transaction(connection);
        for (const QString& name : left) {
            QFile::remove(file.dir().filePath(name));
        }
    } catch (const StoreError&) {
        return;  // the next start finds it again
    }
}

}  // namespace guanchao
