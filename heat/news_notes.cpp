#include "heat/news_notes.h"

#include "base/values.h"
#include "heat/collector_contract.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString columns = u"select laiyuan,onexian,allxian,zdyxian"_s;

bool hasNotes(Connection& heat) {
    return hasTable(heat, u"xinwenshuoming"_s);
}

void addTable(Connection& heat) {
    heat.execute(
        u"create table if not exists xinwenshuoming (biao text,riqi text,item text,"
        u"laiyuan text,onexian integer default 0,allxian integer default 0,"
        u"zdyxian integer default 0,primary key(biao,item,riqi))"_s);
}

QString whereRow(const NewsRow& row) {
    return u" where biao="_s + quoted(row.table) + u" and item="_s + quoted(row.item) +
           u" and riqi="_s + quoted(row.day);
}

bool isOn(const Recordset& note, QStringView column) {
    return numericPrefix(note.value(column).toText()) > 0;
}

NewsNote noteOf(const Recordset& row) {
    return {row.value(u"laiyuan").toText(), isOn(row, u"onexian"), isOn(row, u"allxian"),
            isOn(row, u"zdyxian")};
}

QChar digit(bool on) {
    return on ? u'1' : u'0';
}

}  // namespace

NewsNote readNewsNote(Connection& heat, const NewsRow& row) {
    if (!hasNotes(heat)) {
        return {};
    }
    const Recordset note(heat, columns + u" from xinwenshuoming"_s + whereRow(row));
    return note.atEnd() ? NewsNote() : noteOf(note);
}

void writeNewsNote(Connection& heat, const NewsRow& row, const NewsNote& note) {
    const bool isEmpty = note == NewsNote();
    if (isEmpty && !hasNotes(heat)) {
        return;
    }
    addTable(heat);
    heat.execute(u"delete from xinwenshuoming"_s + whereRow(row));
    if (!isEmpty) {
        const QStringList values = {quoted(row.table),    quoted(row.day),     quoted(row.item),
                                    quoted(note.laiyuan), digit(note.onexian), digit(note.allxian),
                                    digit(note.zdyxian)};
        heat.execute(
            u"insert into xinwenshuoming(biao,riqi,item,laiyuan,onexian,allxian,zdyxian) values("_s +
            values.join(u',') + u')');
    }
}

void renameNotes(Connection& heat, const QString& table, const QString& item, const QString& name) {
    if (hasNotes(heat)) {
        heat.execute(u"update or replace xinwenshuoming set item="_s + quoted(name) +
                     u" where biao="_s + quoted(table) + u" and item="_s + quoted(item));
    }
}

RowScope notesOf(const QString& table, const QStringList& items) {
    return {u"xinwenshuoming"_s,
            u" where biao="_s + quoted(table) + u" and item in ("_s + quotedList(items) + u')'};
}

NewsNotes readNewsNotes(Connection& heat, const QString& table, const QString& condition) {
    NewsNotes notes;
    if (!hasNotes(heat)) {
        return notes;
    }
    for (Recordset row(heat, columns + u",riqi,item from xinwenshuoming where biao="_s +
                                 quoted(table) + condition);
         !row.atEnd(); row.moveNext()) {
        notes.insert({row.value(u"riqi").toText(), row.value(u"item").toText()}, noteOf(row));
    }
    return notes;
}

QString latestNotes(const QString& table) {
    return u" and (item,riqi) in (select item,max(riqi) from xinwenshuoming where biao="_s +
           quoted(table) + u" group by item)"_s;
}

QString incomparableLast(Connection& heat, const QString& table, const QString& key) {
    if (!hasNotes(heat)) {
        return {};
    }
    return u"exists(select 1 from xinwenshuoming as n where n.biao=%1 and n.item=%2.%3"
           u" and n.riqi=date(%2.riqi) and (n.allxian>0 or %2.allzhangfu=%4)),"_s.arg(
               quoted(table), table, key, numberText(noGrowth));
}

}  // namespace guanchao
