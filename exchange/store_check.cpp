#include "exchange/store_check.h"

#include <QFileInfo>

#include "store/prepared_stores.h"
#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<StoreCount> mainCounts = {
    {u"主题"_s, u"%1 个主题"_s, u"select count(distinct zhutiname) from dzhzhuti"_s},
    {u"条数"_s, u"%1 条"_s, u"select count(*) from dzhzhuti"_s},
    {u"股票"_s, u"%1 只股票"_s, u"select count(*) from dmb"_s},
    {u"监控"_s, u"%1 个监控"_s,
     u"select (select count(*) from zhutijiankong)+(select count(*) from gegujiankong)"_s}};
const QList<StoreCount> articleCounts = {
    {u"文章"_s, u"%1 篇文章"_s, u"select count(*) from wenzhang"_s}};
const QList<StoreCount> heatCounts = {
    {u"新闻"_s, u"%1 条新闻数量"_s, u"select count(*) from xinwenshul"_s},
    {u"商品"_s, u"%1 种商品"_s, u"select count(*) from shopname"_s}};

// What else a user would miss, where there is any. A store of an earlier program lacks some tables.
struct OtherCount {
    QString table;
    QString words;
    QString counted = u"*"_s;
};

const QList<OtherCount> mainOthers = {{u"zixuangu"_s, u"自选股 %1 只"_s},
                                      {u"zixuanzu"_s, u"自选分组 %1 个"_s},
                                      {u"zixuanzugu"_s, u"分组里的股票 %1 只"_s},
                                      {u"gegubeizhu"_s, u"个股备注 %1 条"_s},
                                      {u"zhutiriji"_s, u"复盘 %1 天"_s, u"distinct riqi"_s},
                                      {u"fupanbeizhu"_s, u"复盘备注 %1 条"_s},
                                      {u"xuanticai"_s, u"选出的题材 %1 条"_s},
                                      {u"yejiyugao"_s, u"业绩预告 %1 条"_s},
                                      {u"yejiyuyuejinqi"_s, u"业绩预约 %1 条"_s}};
const QList<OtherCount> articleOthers = {{u"proxy"_s, u"代理服务器 %1 个"_s}};
const QList<OtherCount> heatOthers = {{u"gongsixinwen"_s, u"公司新闻数量 %1 条"_s},
                                      {u"shophq"_s, u"商品数量 %1 条"_s},
                                      {u"xinwenbiaoti"_s, u"新闻标题 %1 条"_s}};

const QList<OtherCount>& othersOf(CopiedStore store) {
    switch (store) {
        case CopiedStore::article:
            return articleOthers;
        case CopiedStore::heat:
            return heatOthers;
        case CopiedStore::main:
            break;
    }
    return mainOthers;
}

QStringList othersIn(Connection& connection, CopiedStore store) {
    const QStringList tables = tablesIn(connection);
    QStringList words;
    for (const OtherCount& it : othersOf(store)) {
        if (!tables.contains(it.table)) {
            continue;
        }
        const QString query = u"select count("_s + it.counted + u") from "_s + it.table;
        const qint64 count = Recordset(connection, query).value(0).toInteger();
        if (count > 0) {
            words << it.words.arg(count);
        }
    }
    return words;
}

QList<qint64> countsIn(Connection& connection, CopiedStore store) {
    QList<qint64> counts;
    for (const StoreCount& count : countsOf(store)) {
        counts << Recordset(connection, count.query).value(0).toInteger();
    }
    return counts;
}

QString faultWords(CopiedStore store, const StoreFile& file, StoreFault fault) {
    switch (fault) {
        case StoreFault::damaged:
            return u"已损坏"_s;
        case StoreFault::notADatabase:
            return file.key.isEmpty() ? u"已损坏"_s : u"已损坏，或者密码不对"_s;
        case StoreFault::busy:
            return u"正被其他程序占用"_s;
        case StoreFault::other:
            return u"不是"_s + wordOf(store);
        default:
            return u"读不出来，请检查磁盘和访问权限"_s;
    }
}

QString faultOf(CopiedStore store, const StoreFile& file, const StoreError& failure) {
    const QFileInfo info(file.path);
    if (!info.exists()) {
        return u"没有这个文件"_s;
    }
    return info.size() == 0 ? u"是空文件"_s : faultWords(store, file, failure.fault());
}

}  // namespace

const QList<StoreCount>& countsOf(CopiedStore store) {
    switch (store) {
        case CopiedStore::article:
            return articleCounts;
        case CopiedStore::heat:
            return heatCounts;
        case CopiedStore::main:
            break;
    }
    return mainCounts;
}

void requireWhole(const StoreFile& file) {
    Connection connection = file.open();
    const QString check = u"pragma quick_check(1)"_s;
    const QString result = Recordset(connection, check).value(0).toText();
    // The library takes a file of no bytes for a store without tables.
    if (result != u"ok"_s || QFileInfo(file.path).size() == 0) {
        throw StoreError(result, file.path, check, StoreFault::damaged);
    }
}

QList<qint64> readCounts(CopiedStore store, const StoreFile& file) {
    Connection connection = file.open();
    return countsIn(connection, store);
}

QString StoreContent::words(CopiedStore store) const {
    if (!isReadable()) {
        return u"不能读取（"_s + fault + u"）"_s;
    }
    QStringList words;
    for (qsizetype it = 0; it < counts.size(); ++it) {
        words << countsOf(store)[it].words.arg(counts[it]);
    }
    return (words + others).join(u'，');
}

StoreContent contentOf(CopiedStore store, const StoreFile& file, Look look) {
    try {
        if (look == Look::whole) {
            requireWhole(file);
        }
        Connection connection = file.open();
        return {{}, countsIn(connection, store), othersIn(connection, store)};
    } catch (const StoreError& failure) {
        return {faultOf(store, file, failure), {}, {}};
    }
}

StoreContents contentsOf(const QList<CopiedStore>& wanted, const Stores& stores, Look look) {
    StoreContents contents;
    for (const CopiedStore store : wanted) {
        contents[store] = contentOf(store, fileOf(stores, store), look);
    }
    return contents;
}

}  // namespace guanchao
