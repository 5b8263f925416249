#include "heat/news_notes.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

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

QChar digit(bool on) {
    return on ? u'1' : u'0';
}

}  // namespace

NewsNote readNewsNote(Connection& heat, const NewsRow& row) {
    if (!hasNotes(heat)) {
        return {};
    }
    const Recordset note(
        heat, u"select laiyuan,onexian,allxian,zdyxian from xinwenshuoming"_s + whereRow(row));
    return note.atEnd() ? NewsNote()
                        : NewsNote{note.value(0).toText(), isOn(note, u"onexian"),
                                   isOn(note, u"allxian"), isOn(note, u"zdyxian")};
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

LowerBounds readLowerBounds(Connection& heat, const QString& table, const QString& condition) {
    LowerBounds bounds;
    if (!hasNotes(heat)) {
        return bounds;
    }
    Recordset notes(heat,
                    u"select riqi,item,onexian,allxian,zdyxian from xinwenshuoming where biao="_s +
                        quoted(table) + u" and onexian+allxian+zdyxian>0"_s + condition);
    for (; !notes.atEnd(); notes.moveNext()) {
        const struct {
            QStringView column;
            QString shown;
        } counts[] = {{u"onexian", u"一日数量"_s},
                      {u"allxian", u"全部数量"_s},
                      {u"zdyxian", u"自定义数量"_s}};
        for (const auto& it : counts) {
            if (isOn(notes, it.column)) {
                bounds.insert({notes.value(0).toText(), notes.value(1).toText(), it.shown});
            }
        }
    }
    return bounds;
}

QString lowerBoundsLast(Connection& heat, const QString& table, const QString& key) {
    if (!hasNotes(heat)) {
        return {};
    }
    return u"exists(select 1 from xinwenshuoming as n where n.biao=%1 and n.item=%2.%3"
           u" and n.riqi=date(%2.riqi) and n.allxian>0),"_s.arg(quoted(table), table, key);
}

}  // namespace guanchao
