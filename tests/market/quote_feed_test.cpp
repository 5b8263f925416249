#include "market/quote_feed.h"

#include "formats/gbk.h"
#include "market/quote_run.h"
#include "tests/support/store_test.h"

namespace guanchao {

// A line of the service that opened at 1, with the last field at `lastField`.
static QString line(const QString& code, const QString& close = u"1"_s,
                    const QString& last = u"2"_s, int lastField = 32) {
    QStringList fields = {u"var hq_str_"_s + code + u"=\"平安银行"_s, u"1"_s, close, last};
    for (int field = 4; field <= lastField; ++field) {
        fields << QString::number(field);
    }
    return fields.join(u',') + u"\";\n"_s;
}

static const CodeBatch both{u"sh600000,sz000001,"_s, 2};

class QuoteFeedTest : public StoreTest {
protected:
    QuoteFeedTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        http_.answer = [this](const QString&) { return reply_; };
    }

    void replyWith(const QString& text) { reply_ = gbkFromText(text); }

    MissedQuotes update(qint16 tojiankong, const CodeBatch& batch = both) {
        MissedQuotes all;
        const auto note = [&](const CodeBatch&, const MissedQuotes& missed) { all = missed; };
        outcomeOf(feed_.gengxinhq({batch}, tojiankong, note, {}));
        return all;
    }
    // The reason why a line is refused; empty if it is taken.
    QString refusal(qint16 tojiankong) { return update(tojiankong).refusals.value(0); }

    QStringList quotes() {
        return store_.rows(
            u"select dm,sp,zhangjine,zhangfu,kp,zg,zd,totalsl,totaljine,newhqtime"
            u" from dmb order by dm"_s);
    }

    std::optional<QByteArray> reply_;
    QuoteFeed feed_{store_.stores, globals_, clock_, QuoteSource(http_, clock_, {Service()})};
    QuoteRun run_{store_.stores, clock_, feed_};
};

TEST_F(QuoteFeedTest, WritesEachLineWithTheGainComputedHereAndFewerColumnsIntoThePollList) {
    QStringList suspended = line(u"sz000001"_s, u"9.00"_s, u"0.000"_s).split(u',');
    suspended[1] = u" 1.50 "_s;
    suspended[4] = u"+.5"_s;
    suspended[5] = u"5."_s;
    suspended[8] = u"123456789012"_s;
    suspended[9] = u"1.5e9"_s;
    replyWith(line(u"sh600000"_s, u"8.00"_s, u"8.123"_s) + suspended.join(u','));
    update(0);
    EXPECT_EQ(http_.paths, QStringList{u"/list=sh600000,sz000001,"_s});
    EXPECT_EQ(
        quotes(),
        QStringList({u"SH600000|8.123|0.123|1.5375|1|4|5|8|9|2026-11-24 10:00:00"_s,
                     u"SZ000001|0|0|0|1.5|0.5|5|123456789012|1500000000|2026-11-24 10:00:00"_s}));
    store_.run({u"insert into jiankonghq(dm,jc) values('SZ000001','平安银行')"_s});
    replyWith(line(u"sh600000"_s, u"1"_s, u"1"_s) + line(u"sz000001"_s, u"3"_s, u"2.00"_s));
    update(1);
    EXPECT_EQ(store_.rows(u"select dm,sp,zhangjine,zhangfu,totalsl,totaljine,newhqtime from"
                          u" jiankonghq"_s),
              QStringList{u"SZ000001|2|-1|-33.3333|8|9|2026-11-24 10:00:00"_s});
    EXPECT_TRUE(quotes()[0].startsWith(u"SH600000|8.123|"_s)) << "the code table is left alone";
}

TEST_F(QuoteFeedTest, ABrokenLineIsRefusedAndTheOthersAreWritten) {
    const QStringList before = quotes();
    const QString good = line(u"sh600000"_s);
    const std::pair<QString, QString> cases[] = {
        {line(u"sz000001"_s, u"1"_s, u"2"_s, 4), u"行情数据不完整：SZ000001"_s},
        {u"var hq_str_sz000001=\"平安,1,2\";\n"_s, u"行情数据不完整：SZ000001"_s},
        {u"var hq_str_sz000001=\"平\";\n"_s, u"行情数据不完整：SZ000001"_s},
        {line(u"sz000001"_s, u"1"_s, u"2"_s, 30), u"行情数据不完整：SZ000001"_s},
        {line(u"sz000001"_s, u"0.000"_s), u"行情数据的昨收盘为0：SZ000001"_s},
        {line(u"sz000001"_s, u"1"_s, u"-2"_s), u"行情数据的第4个字段是负数：SZ000001 -2"_s},
        {u"a,b,c,d,e,f;\n"_s, u"行情数据中没有代码：a"_s},
    };
    for (const auto& [piece, reason] : cases) {
        store_.run({u"update dmb set sp=1,newhqtime=null"_s});
        replyWith(piece + good);
        EXPECT_EQ(refusal(0), reason);
        EXPECT_TRUE(quotes()[0].startsWith(u"SH600000|2|"_s));
        EXPECT_EQ(quotes()[1], before[1]);
        EXPECT_EQ(globals_.hqmang, 0);
    }
    replyWith(cases[0].first + good + cases[2].first);
    EXPECT_EQ(update(0).refusals, QStringList({cases[0].second, cases[2].second}));
    replyWith(u"var hq_str_sh999999=\"\";\n"_s + line(u"sz009999"_s) +
              line(u"sz000001"_s, u"1"_s, u"2"_s, 31));
    update(0);
    EXPECT_TRUE(quotes()[1].startsWith(u"SZ000001|2|"_s))
        << "a line that ends with the time is whole, unknown codes are passed over";
    store_.run({u"update dmb set sp=1"_s});
    store_.refuse(u"update on dmb when new.dm='SZ000001'"_s);
    replyWith(good + line(u"sz000001"_s));
    EXPECT_THROW(update(0), StoreError);
    EXPECT_EQ(store_.rows(u"select sp from dmb"_s), QStringList({u"1"_s, u"1"_s}))
        << "a batch is written as a whole";
}

// What isn't a number would be a piece of the statement, up to a comment that takes its condition
// away.
TEST_F(QuoteFeedTest, AFieldThatIsNoNumberWritesNothing) {
    store_.run({u"insert into jiankonghq(dm) values('SH600000'),('SZ000001')"_s});
    const QString pollList = u"select dm,sp,totalsl,totaljine from jiankonghq"_s;
    const auto ofSecond = [&] { return QStringList{quotes()[1], store_.rows(pollList)[1]}; };
    const QStringList before = ofSecond();
    const QString good = line(u"sh600000"_s);
    for (const QString& text : {u"10.5 where 1=1 --"_s, u"zg"_s, u""_s, u" "_s, u"1 2"_s, u"0x1F"_s,
                                u"1e400"_s, u"(select 1)"_s}) {
        for (const int field : {1, 2, 3, 4, 5, 8, 9}) {
            QStringList fields = line(u"sz000001"_s).split(u',');
            fields[field] = text;
            replyWith(good + fields.join(u','));
            for (const qint16 tojiankong : {qint16(0), qint16(1)}) {
                EXPECT_EQ(refusal(tojiankong),
                          u"行情数据的第%1个字段不是数字：SZ000001 %2"_s.arg(field + 1).arg(
                              text.trimmed().left(20)));
                EXPECT_EQ(ofSecond(), before);
            }
        }
    }
    const QString everyCode = u"'or dm>'"_s;
    replyWith(good + line(everyCode));
    update(0, {u"sh600000,"_s, 1});
    update(1, {u"sh600000,"_s, 1});
    EXPECT_EQ(ofSecond(), before);
}

class QuoteRunTest : public QuoteFeedTest {
protected:
    // Codes SH600100 and following, all quoted at 2 over 1.
    void addCodes(int count) {
        QStringList inserts;
        for (int at = 0; at < count; ++at) {
            inserts << u"insert into dmb(dm) values('SH%1')"_s.arg(600100 + at);
        }
        store_.run({u"delete from dmb"_s});
        store_.run(inserts);
        http_.answer = [](const QString& path) -> std::optional<QByteArray> {
            QString text;
            for (const QString& code : path.section(u'=', 1).split(u',', Qt::SkipEmptyParts)) {
                text += line(code);
            }
            return gbkFromText(text);
        };
    }

    QString run() { return QCoro::waitFor(run_.run(report_, {})).words(); }
    int updatedCodes() { return store_.rows(u"select count(*) from dmb where sp=2"_s)[0].toInt(); }
    QStringList hqtime() { return store_.rows(u"select hqtime from tempcanshu"_s); }

    QStringList reports_;
    QuoteRun::Report report_ = [this](const QuoteProgress& it) {
        reports_ << u"%1/%2 %3"_s.arg(it.asked).arg(it.total).arg(it.words().section(u':', 1));
    };
};

TEST_F(QuoteRunTest, AsksForNinetyNineCodesAtATime) {
    addCodes(200);
    EXPECT_EQ(run(), u"更新行情数据完成！"_s);
    EXPECT_EQ(http_.paths[0].count(u',') + http_.paths[1].count(u','), 2 * 99);
    EXPECT_EQ(http_.paths.last(), u"/list=sh600298,sh600299,"_s);
    EXPECT_EQ(reports_,
              QStringList({u"0/200 "_s, u"99/200 99"_s, u"198/200 198"_s, u"200/200 200"_s}));
    EXPECT_EQ(updatedCodes(), 200);
    EXPECT_EQ(hqtime(), QStringList{u"2026-11-24 10:00:00"_s});
    addCodes(100);
    run();
    EXPECT_EQ(http_.paths.last(), u"/list=sh600199,sh000001,"_s) << "no code is asked for alone";
}

TEST_F(QuoteRunTest, TellsHowManyCameAndWhyTheOthersDidNot) {
    addCodes(250);
    const auto good = http_.answer;
    http_.answer = [good](const QString& path) -> std::optional<QByteArray> {
        if (path.contains(u"sh600300"_s)) {
            return std::nullopt;
        }
        return good(path)
            ->replace(gbkFromText(u"sh600150=\"平安银行,1,1,2,"_s),
                      gbkFromText(u"sh600150=\"平安银行,1,1,x,"_s))
            .replace(gbkFromText(line(u"sh600151"_s)), {})
            .replace(gbkFromText(line(u"sh600152"_s)), "var hq_str_sh600152=\"\";\n");
    };
    EXPECT_EQ(run(),
              u"更新了 195 只股票的行情，共 250 只，没有更新的有 55 只：\n"
              u"52只：没有应答\n"
              u"1只：读不出（行情数据的第4个字段不是数字：SH600150 x）\n"
              u"1只：服务没有这只股票\n"
              u"1只：应答里没有这些代码\n"
              u"请检查网络，在“工具 / 行情来源”里看看网站通不通，过一会儿再更新。"_s);
    EXPECT_EQ(updatedCodes(), 195);
}

TEST_F(QuoteRunTest, TheTimeStaysWhereNothingCame) {
    addCodes(120);
    http_.answer = nullptr;
    store_.run({u"update tempcanshu set hqtime=null"_s});
    run();
    store_.run({u"delete from dmb"_s});
    run();
    EXPECT_EQ(http_.paths.size(), 2);
    EXPECT_EQ(hqtime(), QStringList{u"null"_s});
}

TEST_F(QuoteRunTest, SomeRequestsAreAheadAndTheirRepliesKeepTheOrder) {
    addCodes(600);
    Service service;
    service.ahead = 3;
    QuoteFeed feed(store_.stores, globals_, clock_, QuoteSource(http_, clock_, {service}));
    QuoteRun ahead(store_.stores, clock_, feed);
    Runs runs(failures_);
    const auto first = std::make_shared<Later<bool>>();
    http_.onGet = [&] { http_.gate = http_.paths.size() == 1 ? first : nullptr; };
    runs.start([&](std::stop_token stop) -> QCoro::Task<> { co_await ahead.run(report_, stop); });
    EXPECT_EQ(http_.paths.size(), 3) << "so many are on their way, the later ones answered";
    EXPECT_EQ(reports_.size(), 1) << "none is written before the first";
    first->deliver(true);
    EXPECT_FALSE(runs.running());
    EXPECT_EQ(updatedCodes(), 600);
}

}  // namespace guanchao
