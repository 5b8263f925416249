#include "exchange/news_import.h"

#include "base/activity.h"
#include "base/values.h"
#include "exchange/table_merge.h"
#include "platform/pick_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A day or a moment of the file as the stores keep moments; any other text stays as it is.
QString momentText(const QString& text) {
    const QDate day = QDate::fromString(text.left(10), Qt::ISODate);
    const QTime time =
        text.size() == 10 ? QTime(0, 0) : QTime::fromString(text.mid(11), Qt::ISODate);
    if (!day.isValid() || !time.isValid()) {
        return text;
    }
    return dateText(day) + u' ' + time.toString(u"HH:mm:ss"_s);
}

// The values from field `first` to the last, as numbers of a statement.
QString numbersFrom(const Recordset& row, int first) {
    QString text = row.value(first).toText();
    for (int field = first + 1; field < row.fieldCount(); ++field) {
        text += u',' + row.value(field).toText();
    }
    return text;
}

TableMerge themeNews() {
    return {
        u"select date(riqi) as riqi,zhutiname,onecishu,onezhangfu,allcishu,allzhangfu,zdycishu,"
        u"zdyzhangfu,zdytianshu,yixiaza  from xinwenshul  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,zhutiname from xinwenshul where date(riqi)='"_s +
                   row.value(0).toText() + u"' and zhutiname='"_s + row.value(1).toText() + u"'"_s;
        },
        [](const Recordset& row) -> QString {
            return u"insert into  xinwenshul(riqi,zhutiname,onecishu,onezhangfu,allcishu,"
                   u"allzhangfu,zdycishu,zdyzhangfu,zdytianshu,yixiaza) values('"_s +
                   momentText(row.value(0).toText()) + u"','"_s + row.value(1).toText() + u"',"_s +
                   numbersFrom(row, 2) + u")"_s;
        }};
}

TableMerge commodityDays() {
    return {
        u"select shopname,date(riqi) as riqi,zhangzi, dazhang, baozhang, shengzi, diezi,"
        u" dadie, baodie, jiangzi, zongfen, zhangfu from shophq  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,shopname from shophq where date(riqi)='"_s +
                   row.value(1).toText() + u"' and shopname='"_s + row.value(0).toText() + u"'"_s;
        },
        [](const Recordset& row) -> QString {
            return u"insert into  shophq(shopname,riqi,zhangzi, dazhang, baozhang, shengzi,"
                   u" diezi, dadie, baodie, jiangzi, zongfen, zhangfu) values('"_s +
                   row.value(0).toText() + u"','"_s + momentText(row.value(1).toText()) + u"',"_s +
                   numbersFrom(row, 2) + u")"_s;
        }};
}

TableMerge commodities() {
    return {
        u"select shopname,guanzhudu,aboutgegu,adddate,date(riqi) as riqi,zhangzi, dazhang,"
        u" baozhang, shengzi, diezi, dadie, baodie, jiangzi, zongfen, zhangfu from shopname"
        u"  order by rowid asc "_s,
        [](const Recordset& row) -> QString {
            return u"select date(riqi) as riqi,shopname from shopname where  shopname='"_s +
                   row.value(0).toText() + u"'"_s;
        },
        [](const Recordset& row) -> QString {
            return u"insert into  shopname(shopname,guanzhudu,aboutgegu,adddate,riqi,zhangzi,"
                   u" dazhang, baozhang, shengzi, diezi, dadie, baodie, jiangzi, zongfen,"
                   u" zhangfu) values('"_s +
                   row.value(0).toText() + u"',"_s + row.value(1).toText() + u",'"_s +
                   row.value(2).toText() + u"','"_s + momentText(row.value(3).toText()) + u"','"_s +
                   momentText(row.value(4).toText()) + u"',"_s + numbersFrom(row, 5) + u")"_s;
        }};
}

}  // namespace

NewsImport::NewsImport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), dialogs_(dialogs), run_(run) {}

void NewsImport::importNews() {
    const std::optional<QString> path =
        pickFile(dialogs_, u"请选择主题新闻数量库文件"_s, u"caijiqi.ztb"_s);
    if (!path) {
        return;
    }
    int count = 0;
    const bool complete = run_.run([&] {
        Activity activity(u"导入新闻和商品"_s);
        Connection heat = stores_.heat.open();
        Connection file(*path, stores_.heat.key);
        const std::pair<QString, TableMerge> merges[] = {{u"主题新闻数量"_s, themeNews()},
                                                         {u"商品行情"_s, commodityDays()},
                                                         {u"商品名称"_s, commodities()}};
        for (const auto& [table, merge] : merges) {
            count += mergeTable(merge, heat, file, run_);
            activity.wrote(table);
        }
    });
    if (complete) {
        dialogs_.tell(u"导入主题新闻数量完成，共导入新的记录："_s + QString::number(count) +
                      u"条"_s);
    }
}

}  // namespace guanchao
