// What is read into stores, and store files that come from elsewhere.
#include <QApplication>

#include "base/values.h"
#include "collector/code_table_job.h"
#include "exchange/article_import.h"
#include "exchange/kept_copies.h"
#include "exchange/news_import.h"
#include "exchange/store_check.h"
#include "exchange/store_copy.h"
#include "exchange/text_import.h"
#include "exchange/theme_import.h"
#include "formats/gbk.h"
#include "heat/headline_store.h"
#include "heat/news_notes.h"
#include "market/quote_feed.h"
#include "store/prepared_stores.h"
#include "tests/campaign/outside_reader.h"
#include "tests/support/fakes.h"
#include "tests/support/test_stores.h"
#include "utilities/proxies.h"

namespace guanchao {

namespace {

const QString date = u"2026-11-24 10:00:00"_s;

// All plain, so that what garbles a file garbles its content.
TestStores& made() {
    static TestStores stores;
    static const bool filled = [] {
        stores.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        stores.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        stores.run({u"insert into jiankonghq(dm,jc) values('SH600000','')"_s});
        for (StoreFile* store : {&stores.stores.heat, &stores.stores.article}) {
            rekey(store->path, store->key, {});
            store->key.clear();
        }
        return true;
    }();
    Q_UNUSED(filled);
    return stores;
}

qint64 numberIn(const StoreFile& store, const QString& query) {
    return TestStores::rows(store, query)[0].toLongLong();
}

FakeHttp answering(const QByteArray& bytes) {
    FakeHttp http;
    http.answer = [bytes](const QString&) { return bytes; };
    return http;
}

void takeQuotes(const QByteArray& bytes) {
    static const Initials initials({});
    const Stores& stores = made().stores;
    const FakeClock clock;
    FakeHttp http = answering(bytes);
    Globals globals;
    QuoteFeed feed(stores, globals, clock, QuoteSource(http, clock, {Service()}));
    for (const qint16 toPollList : {qint16(0), qint16(1)}) {
        outcomeOf(feed.gengxinhq({{u"sh600000,sz000001,"_s, 2}}, toPollList,
                                 [](const CodeBatch&, const MissedQuotes&) {}, {}));
    }
    CodeTableJob(stores, clock, initials, {Service()})
        .write({u"sh600000,sz000001"_s, {}}, {0, {bytes}});
    for (const QString& table : {u"dmb"_s, u"jiankonghq"_s}) {
        const QString odd = u"select count(*) from "_s + table +
                            u" where not (abs(sp)<=1e18 and abs(zhangfu)<=1e30 and"
                            u" abs(totalsl)<=1e18 and abs(totaljine)<=1e18)"_s;
        requireSense(numberIn(stores.main, odd) == 0, "库里写进了不在范围内的数");
    }
    made().run({u"delete from dmb where dm not in ('SH600000','SZ000001')"_s});
}

void takeProxies(const QByteArray& bytes) {
    const Stores& stores = made().stores;
    FakeHttp http = answering(bytes);
    FakeDialogs dialogs;
    const Service vendor{.host = u"http://vendor"_s, .referer = {}};
    Proxies proxies(stores, dialogs, http, vendor);
    const bool taken = outcomeOf(proxies.download({}));
    requireSense(taken || proxies.load().lines.isEmpty(), "没有读成的网页留下了服务器");
    stores.article.open().execute(u"delete from proxy"_s);
}

// A preview, then an import, which leaves nothing to a second one.
void importText(const QByteArray& bytes) {
    const Stores& stores = made().stores;
    TextSource source;
    source.path = made().folder() + u"主题.txt"_s;
    source.codeFirst = bytes.size() % 2 == 0;
    source.firstSeparator = separatorEntries().value(bytes.size() / 2 % 7);
    source.secondSeparator = separatorEntries().value(bytes.size() / 14 % 7);
    writeFile(source.path, bytes.left(16384));
    const FakeClock clock;
    FakeDialogs dialogs;
    ExchangeRun run([](const ShownExchange&) {});
    ResultGrid grid;
    TextImport(stores, clock, dialogs, run).preview(source, grid);
    ExchangeWork work({}, {});
    const int added = mergeText(stores, source, date, work).count;
    requireSense(added == numberIn(stores.main, u"select count(*) from dzhzhuti"_s),
                 "说的行数和写进去的不一样");
    requireSense(mergeText(stores, source, date, work).count == 0, "再导入一次又多了行");
    made().run({u"delete from dzhzhuti"_s});
}

// The file as it was picked: a plain one says so at its beginning.
StoreFile picked(const QByteArray& bytes) {
    const StoreFile file{made().folder() + u"选.ztb"_s,
                         bytes.startsWith("SQLite format 3") ? QString() : made().stores.backupKey};
    writeFile(file.path, bytes);
    return file;
}

int imported(const StoreFile& file) {
    Stores stores = made().stores;
    stores.backupKey = file.key;
    ExchangeWork work({}, {});
    return mergeLibrary(stores, file.path, date, work);
}

void importLibrary(const StoreFile& file) {
    const auto empty = qScopeGuard([] {
        made().run({u"delete from dzhzhuti"_s,
                    u"delete from dmb where dm not in ('SH600000','SZ000001')"_s});
    });
    imported(file);
    requireSense(imported(file) == 0, "再导入一次又多了行");
    for (const QString& table : {u"dzhzhuti"_s, u"dmb"_s}) {
        requireWholeCharacters(made().rows(u"select * from "_s + table).join(u' '));
    }
}

// Of articles or news.
template <typename Import>
void importPicked(const StoreFile& file, const StoreFile& into, Import import,
                  const QStringList& tables) {
    FakeDialogs dialogs;
    dialogs.picked = file.path;
    ExchangeRun run([](const ShownExchange&) {});
    const auto empty = qScopeGuard([&] {
        for (const QString& table : tables) {
            into.open().execute(u"delete from "_s + table);
        }
    });
    endOf(import(made().stores, dialogs, run, {}));
    requireWhole(into);
}

void importNewsFile(const StoreFile& file) {
    importPicked(file, made().stores.heat, importNews,
                 {u"xinwenshul"_s, u"shophq"_s, u"shopname"_s});
}
void importArticleFile(const StoreFile& file) {
    importPicked(file, made().stores.article, importArticles, {u"wenzhang"_s});
}

// A store in place of the program's own: checked, counted and copied.
void checkCopy(const StoreFile& file) {
    requireWhole(file);
    const QString copy = made().folder() + u"副本.mzdat"_s;
    copyStore(file, copy, [] {});
    requireWhole({copy, file.key});
    readCounts(CopiedStore::main, file);
}

// A value as only another program could have stored it.
QString oddValue(const QByteArray& piece) {
    const QString bytes = u"X'"_s + QString::fromLatin1(piece.toHex()) + u'\'';
    switch (piece.size() % 6) {
        case 0:
            return u"null"_s;
        case 1:
            return bytes;
        case 2:
            return u"9e999"_s;
        case 3:
            return QString::number(numericPrefix(QString::fromLatin1(piece)), 'g', 17);
        default:
            return u"cast("_s + bytes + u" as text)"_s;
    }
}

QByteArray libraryBytes(Schema schema, const QString& key, const QStringList& statements) {
    const StoreFile file{made().folder() + u"源.ztb"_s, key};
    QFile::remove(file.path);
    createStore(file.path, file.key, schemaText(schema));
    for (const QString& statement : statements) {
        file.open().execute(statement);
    }
    return contentOf(file.path);
}

// A library whose rows have values of all kinds in all columns.
void importOddRows(const QByteArray& bytes) {
    static const QByteArray empty = libraryBytes(Schema::backup, {}, {});
    const StoreFile file = picked(empty);
    {
        Connection library = file.open();
        const QList<QByteArray> pieces = bytes.left(4096).split('\t');
        for (qsizetype at = 0; at + 6 <= qMin(pieces.size(), 60); at += 6) {
            QStringList values;
            for (const QByteArray& piece : pieces.mid(at, 6)) {
                values << oddValue(piece);
            }
            library.execute(u"insert into dzhzhuti values("_s + values.join(u',') + u')');
            library.execute(u"insert into dmb values("_s + values.mid(0, 5).join(u',') + u')');
        }
    }
    importLibrary(file);
}

QList<QByteArray> libraries(const QString& key) {
    return {libraryBytes(
        Schema::backup, key,
        {u"insert into dzhzhuti values('白酒','SH600519','贵州茅台','2026-11-01',5,1)"_s,
         u"insert into dzhzhuti values('银行','SH600000',null,null,9.5,'7')"_s,
         u"insert into dmb values('SH600519','600519','贵州茅台','gzmt','')"_s})};
}

const QString article =
    u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values('2026-11-24',"_s +
    u"'甲','大','小','题','文')"_s;
const QStringList news = {
    u"insert into xinwenshul values('2026-11-24 09:30:05','白酒',1,2.25,3,-0.5,5,1e20,30,1)"_s,
    u"insert into shophq values('铜','2026-11-24 10:00:00',1,2,3,4,5,6,7,8,9.5,-10.25)"_s,
    u"insert into shopname values('铜',9,'新','','',1,1,1,1,1,1,1,1,1,1)"_s,
    u"create table xinwenshuoming (biao text,riqi text,item text,laiyuan text,onexian integer,"
    u"allxian integer,zdyxian integer)"_s,
    u"insert into xinwenshuoming values('xinwenshul','2026-11-24','白酒','eastmoney',0,1,1)"_s,
    u"create table xinwenbiaoti (guanjianci text,riqi text,shijian text,biaoti text,meiti text,"
    u"wangzhi text)"_s,
    u"insert into xinwenbiaoti values('白酒','2026-11-24','2026-11-24 09:30:05','白酒大涨','时报',"
    u"'http://a.b/1')"_s};

void readKeptNews(const StoreFile& heat) {
    for (const Headline& it : readHeadlines(heat, u"白酒"_s, u"2026-11-24"_s)) {
        requireWholeCharacters(it.title);
    }
    Connection store = heat.open();
    for (const NewsNote& it : readNewsNotes(store, u"xinwenshul"_s, {})) {
        requireWholeCharacters(it.laiyuan);
    }
}

}  // namespace

QList<OutsideReader> storeReaders() {
    const QList<QByteArray> quotes = {"var hq_str_sh600000=\"x,10,10" + ",10.5"_ba.repeated(28) +
                                          ",2026-11-24,10:00:00\";\n"
                                          "var hq_str_sz000001=\"" +
                                          gbkFromText(u"XD平安银"_s) + ",1,1" +
                                          ",1"_ba.repeated(30) + "\";\n",
                                      "var hq_str_sh600000=\"\";\nvar hq_str_sz000001=\"\";\n"};
    const QByteArray proxies =
        "<table><tr><td>a<td>80<td>b<td>c<td>d<tr><td>192.0.2.18<td>8080</table>";
    const QString themes = u"SH600000\t白酒\t消费\n000001 银行 保险\n白酒：600519、000858\n"_s;
    const auto file = [](void (*read)(const StoreFile&)) {
        return [read](const QByteArray& bytes) { read(picked(bytes)); };
    };
    const auto plain = [](Schema schema, const QStringList& statements) {
        return QList<QByteArray>{libraryBytes(schema, {}, statements)};
    };
    const QList<QByteArray> texts = {gbkFromText(themes), themes.toUtf8()};
    const QList<QByteArray> pages = {proxies};
    const QList<QByteArray> rows = {"白酒\tSH600519\tx\t1\t1.5\t9.5\t"_ba.repeated(3)};
    const QList<QByteArray> themeFiles = libraries({}) + libraries(made().stores.backupKey);
    const QList<QByteArray> heatFiles = plain(Schema::heat, news);
    return {
        {"quote_feed", "写入行情和代码表", 12000, true, quotes, takeQuotes},
        {"proxies", "代理服务器网页", 15000, true, pages, takeProxies},
        {"text_import", "导入文本主题库", 10000, true, texts, importText},
        {"libraries", "导入主题库文件", 12000, true, themeFiles, file(importLibrary)},
        {"odd_rows", "主题库里的怪值", 6000, true, rows, importOddRows},
        {"news", "导入新闻和商品文件", 8000, true, heatFiles, file(importNewsFile)},
        {"kept_news", "新闻标题和数量说明的库", 6000, true, heatFiles, file(readKeptNews)},
        {"articles", "导入文章文件", 8000, true, plain(Schema::article, QStringList{article}),
         file(importArticleFile)},
        {"copies", "备份的库文件", 14000, true, plain(Schema::main, QStringList()),
         file(checkCopy)},
    };
}

}  // namespace guanchao
