#include "collector/counts_writer.h"

#include "base/activity.h"
#include "base/values.h"
#include "collector/growth.h"
#include "heat/collector_contract.h"
#include "heat/headline_store.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<double> formerValue(const Recordset& former, QStringView field) {
    if (former.atEnd()) {
        return std::nullopt;
    }
    return numericPrefix(former.value(field).toText());
}

// A lower bound compares with nothing.
double countGrowth(qint64 count, bool NewsNote::*isLowerBound, const NewsNote& note,
                   const NewsNote& formerNote, std::optional<double> former) {
    const bool compares = !(note.*isLowerBound) && !(formerNote.*isLowerBound);
    return compares ? growth(static_cast<double>(count), former) : noGrowth;
}

// The note of the item's former row, which has its day in that field.
NewsNote noteOf(Connection& connection, const NewsRow& row, const Recordset& former, int day) {
    return former.atEnd()
               ? NewsNote()
               : readNewsNote(connection, {row.table, row.item, former.value(day).toText()});
}

void replaceRow(Connection& connection, const QString& table, const QString& row,
                const QString& insert) {
    connection.execute(u"delete from "_s + table + row);
    connection.execute(insert);
}

}  // namespace

CountsWriter::CountsWriter(const StoreFile& heat, QDate day)
    : heat_(heat), day_(dateText(day)), riqi_(timeText(day)) {}

QString CountsWriter::onDay() const {
    return u" and date(riqi)="_s + quoted(day_);
}

QString CountsWriter::lastBefore() const {
    return u" and date(riqi)<"_s + quoted(day_) + u" order by date(riqi) desc limit 1"_s;
}

// The custom counts of two days compare only if they are over the same number of days, and no
// counts of two kinds of services do.
QString CountsWriter::newsValues(Connection& connection, const NewsRow& row,
                                 const QString& condition, const NewsCounts& counts) const {
    const Recordset former(
        connection, u"select onecishu,allcishu,zdycishu,zdytianshu,date(riqi) from "_s + row.table +
                        condition + lastBefore());
    const NewsNote formerNote = noteOf(connection, row, former, 4);
    const bool compares = formerNote.laiyuan == counts.note.laiyuan;
    const bool customCompares = compares && counts.customDays > 0 &&
                                formerValue(former, u"zdytianshu") == counts.customDays;
    const auto grown = [&](qint64 count, bool NewsNote::*isLowerBound, QStringView field,
                           bool comparesAtAll) {
        return numberText(countGrowth(count, isLowerBound, counts.note, formerNote,
                                      comparesAtAll ? formerValue(former, field) : std::nullopt));
    };
    const QStringList values = {
        QString::number(counts.one),
        grown(counts.one, &NewsNote::onexian, u"onecishu", compares),
        QString::number(counts.all),
        grown(counts.all, &NewsNote::allxian, u"allcishu", compares),
        QString::number(counts.custom),
        grown(counts.custom, &NewsNote::zdyxian, u"zdycishu", customCompares),
        QString::number(counts.customDays)};
    return values.join(u',');
}

void CountsWriter::keepBeside(Connection& connection, const NewsRow& row,
                              const FoundNews& found) const {
    writeNewsNote(connection, row, found.counts.note);
    keepHeadlines(connection, found.words, day_, found.headlines);
}

void CountsWriter::writeTheme(const QString& zhutiname, const FoundNews& found) const {
    const NewsRow row = {u"xinwenshul"_s, zhutiname, day_};
    const QString condition = u" where zhutiname="_s + quoted(zhutiname);
    Connection connection = heat_.open();
    Transaction transaction(connection);
    const QString values = newsValues(connection, row, condition, found.counts);
    replaceRow(connection, row.table, condition + onDay(),
               u"insert into xinwenshul(riqi,zhutiname,onecishu,onezhangfu,allcishu,allzhangfu,"
               u"zdycishu,zdyzhangfu,zdytianshu,yixiaza) values("_s +
                   quoted(riqi_) + u',' + quoted(zhutiname) + u',' + values + u",1)"_s);
    keepBeside(connection, row, found);
    transaction.commit();
}

void CountsWriter::writeCompany(const QString& dm, const QString& jc,
                                const FoundNews& found) const {
    const NewsRow row = {u"gongsixinwen"_s, dm, day_};
    const QString condition = u" where dm="_s + quoted(dm);
    Connection connection = heat_.open();
    Transaction transaction(connection);
    const QString values = newsValues(connection, row, condition, found.counts);
    replaceRow(connection, row.table, condition + onDay(),
               u"insert into gongsixinwen(riqi,dm,jc,onecishu,onezhangfu,allcishu,allzhangfu,"
               u"zdycishu,zdyzhangfu,zdytianshu) values("_s +
                   quoted(riqi_) + u',' + quoted(dm) + u',' + quoted(jc) + u',' + values + u")"_s);
    keepBeside(connection, row, found);
    transaction.commit();
}

void CountsWriter::writeCommodity(const QString& shopname, const WordCounts& counts,
                                  const QString& laiyuan) const {
    const NewsRow row = {u"shophq"_s, shopname, day_};
    const QString condition = u" where shopname="_s + quoted(shopname);
    Connection connection = heat_.open();
    Transaction transaction(connection);
    const Recordset former(connection,
                           u"select zongfen,date(riqi) from shophq"_s + condition + lastBefore());
    const bool compares = noteOf(connection, row, former, 1).laiyuan == laiyuan;
    const QStringList names = {u"zhangzi"_s, u"dazhang"_s, u"baozhang"_s, u"shengzi"_s,
                               u"diezi"_s,   u"dadie"_s,   u"baodie"_s,   u"jiangzi"_s,
                               u"zongfen"_s, u"zhangfu"_s};
    const QStringList values = {
        QString::number(counts.zhangzi),
        QString::number(counts.dazhang),
        QString::number(counts.baozhang),
        QString::number(counts.shengzi),
        QString::number(counts.diezi),
        QString::number(counts.dadie),
        QString::number(counts.baodie),
        QString::number(counts.jiangzi),
        numberText(counts.zongfen),
        numberText(
            growth(counts.zongfen, compares ? formerValue(former, u"zongfen") : std::nullopt))};
    QString assignments;
    for (qsizetype at = 0; at < names.size(); ++at) {
        assignments += u',' + names[at] + u'=' + values[at];
    }
    connection.execute(u"update shopname set riqi="_s + quoted(riqi_) + assignments + condition);
    // Deleted by the user meanwhile: its history must not come back.
    if (connection.changedRows() == 0) {
        throw OperationError(u"商品已删除"_s);
    }
    writeNewsNote(connection, row, {laiyuan});
    replaceRow(connection, row.table, condition + onDay(),
               u"insert into shophq(shopname,riqi,"_s + names.join(u',') + u") values("_s +
                   quoted(shopname) + u',' + quoted(riqi_) + u',' + values.join(u',') + u")"_s);
    transaction.commit();
}

}  // namespace guanchao
