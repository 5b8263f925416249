#include "exchange/news_import.h"

#include "base/values.h"
#include "exchange/row_values.h"
#include "heat/news_notes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A day or a moment of the file, quoted as the stores keep moments; any other text stays as it is.
QString moment(const Recordset& row, int field) {
    const QString text = row.value(field).toText();
    const QDate day = QDate::fromString(text.left(10), Qt::ISODate);
    const QTime time =
        text.size() == 10 ? QTime(0, 0) : QTime::fromString(text.mid(11), Qt::ISODate);
    if (!day.isValid() || !time.isValid()) {
        return quoted(text);
    }
    return quoted(dateText(day) + u' ' + time.toString(u"HH:mm:ss"_s));
}

// How its counts were counted goes with the row: without it they would compare with those of pages.
auto notesOf(const QString& table, const QString& key) {
    return [table, key](Connection& store, Connection& file, const Recordset& row) {
        const NewsRow counts = {table, row.value(key).toText(), row.value(u"riqi").toText()};
        writeNewsNote(store, counts, readNewsNote(file, counts));
    };
}

TableMerge themeNews() {
    return {
        u"select date(riqi) as riqi,zhutiname,onecishu,onezhangfu,allcishu,allzhangfu,zdycishu,"
        u"zdyzhangfu,zdytianshu,yixiaza  from xinwenshul  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,zhutiname from xinwenshul where date(riqi)="_s +
                   quoted(row.value(0).toText()) + u" and zhutiname="_s +
                   quoted(row.value(1).toText());
        },
        [](const Recordset& row) -> QString {
            return u"insert into  xinwenshul(riqi,zhutiname,onecishu,onezhangfu,allcishu,"
                   u"allzhangfu,zdycishu,zdyzhangfu,zdytianshu,yixiaza) values("_s +
                   moment(row, 0) + u',' + quotedFields(row, 1, 1) + u',' + numbersFrom(row, 2) +
                   u')';
        },
        {},
        notesOf(u"xinwenshul"_s, u"zhutiname"_s)};
}

TableMerge commodityDays() {
    return {
        u"select shopname,date(riqi) as riqi,zhangzi, dazhang, baozhang, shengzi, diezi,"
        u" dadie, baodie, jiangzi, zongfen, zhangfu from shophq  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,shopname from shophq where date(riqi)="_s +
                   quoted(row.value(1).toText()) + u" and shopname="_s +
                   quoted(row.value(0).toText());
        },
        [](const Recordset& row) -> QString {
            return u"insert into  shophq(shopname,riqi,zhangzi, dazhang, baozhang, shengzi,"
                   u" diezi, dadie, baodie, jiangzi, zongfen, zhangfu) values("_s +
                   quotedFields(row, 0, 0) + u',' + moment(row, 1) + u',' + numbersFrom(row, 2) +
                   u')';
        },
        {},
        notesOf(u"shophq"_s, u"shopname"_s)};
}

TableMerge commodities() {
    return {
        u"select shopname,guanzhudu,aboutgegu,adddate,date(riqi) as riqi,zhangzi, dazhang,"
        u" baozhang, shengzi, diezi, dadie, baodie, jiangzi, zongfen, zhangfu from shopname"
        u"  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,shopname from shopname where  shopname="_s +
                   quoted(row.value(0).toText());
        },
        [](const Recordset& row) -> QString {
            return u"insert into  shopname(shopname,guanzhudu,aboutgegu,adddate,riqi,zhangzi,"
                   u" dazhang, baozhang, shengzi, diezi, dadie, baodie, jiangzi, zongfen,"
                   u" zhangfu) values("_s +
                   quotedFields(row, 0, 0) + u',' + numberFrom(row, 1) + u',' +
                   quotedFields(row, 2, 2) + u',' + moment(row, 3) + u',' + moment(row, 4) + u',' +
                   numbersFrom(row, 5) + u')';
        }};
}

}  // namespace

QCoro::Task<> importNews(const Stores& stores, Dialogs& dialogs, ExchangeRun& run,
                         std::stop_token stop) {
    const StoreMerge merge = {.activity = u"导入新闻和商品"_s,
                              .question = u"请选择主题新闻数量库文件"_s,
                              .kind = u"主题新闻数量库"_s,
                              .fileName = u"caijiqi.ztb"_s,
                              .store = stores.heat,
                              .tables = {{u"主题新闻数量"_s, themeNews()},
                                         {u"商品行情"_s, commodityDays()},
                                         {u"商品名称"_s, commodities()}},
                              .done = u"导入主题新闻数量完成，共导入新的记录："_s,
                              .unit = u"条"_s,
                              .stopped = u"导入已停止，已导入完的一类保留，其余没有导入。"_s};
    return mergePickedFile(merge, dialogs, run, stop);
}

}  // namespace guanchao
