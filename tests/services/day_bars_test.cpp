#include "services/day_bars.h"

#include "services/bar_check.h"
#include "tests/support/fakes.h"

namespace guanchao {

// Each as "date open high low close volume", or the fault.
static QString words(const ReadBars& read) {
    const QStringList texts = textsOf(read.bars, [](const DayBar& it) {
        return u"%1 %2 %3 %4 %5 %6"_s.arg(it.day.toString(Qt::ISODate))
            .arg(it.open)
            .arg(it.high)
            .arg(it.low)
            .arg(it.closeText)
            .arg(it.volume, 0, 'f', 0);
    });
    return read.fault.isEmpty() ? texts.join(u'|') : read.fault;
}

TEST(DayBarsTest, TencentIsAskedForNoMoreThan640DaysAtATime) {
    const QDateTime now(QDate(2026, 11, 24), QTime(10, 0));
    const QStringList parts =
        barKind(u"tencent"_s)->paths({u"SH600519"_s, {2020, 1, 1}, {2026, 11, 24}, now});
    ASSERT_EQ(parts.size(), 3);
    EXPECT_TRUE(parts[0].contains(u"2020-01-01,2022-06-14"_s));
    EXPECT_TRUE(parts[1].contains(u"2022-06-15,"_s)) << "no day twice, none left out";
    EXPECT_TRUE(parts[2].contains(u",2026-11-24,"_s));
}

TEST(DayBarsTest, CsvTakesTheLinesThatAreDays) {
    const QByteArray header = "Date,Open,High,Low,Close,Volume,Adj Close\n";
    const QByteArray newer = "2026-11-20,10,11,9,10.50,700,10.50\n";
    const QByteArray older = "2026-11-19,9,10,8,9.000,600,9.000\n";
    const QString both = u"2026-11-19 9 10 8 9.000 600|2026-11-20 10 11 9 10.50 700"_s;
    const QString none;
    const std::tuple<const char*, QByteArray, QString> cases[] = {
        {"oldest first", header + newer + older, both},
        {"line ends of another system", QByteArray(header + newer + older).replace("\n", "\r\n"),
         both},
        {"one day is too short", header + newer, none},
        {"two days without a last line feed", QByteArray(header + newer + older).chopped(1), none},
        {"four fields are no day", header + newer + "2026-11-18,1,2,3\n" + older, both},
        {"five fields have no volume", header + "2026-11-20,1,2,3,4\n2026-11-19,1,2,3,5\n",
         u"2026-11-19 1 2 3 5 0|2026-11-20 1 2 3 4 0"_s},
        {"a close that is no number", header + newer + "2026-11-18,1,2,3,null,4\n" + older, both},
        {"a page of HTML", "<html>\n<p>a,b,1,2,3,4\n<p>c,d,1,2,4,4\n</html>\n", noBars},
        {"nothing", QByteArray(), noBars},
    };
    for (const auto& [name, reply, days] : cases) {
        EXPECT_EQ(words(barKind(u"csv"_s)->read(reply, {})), days) << name;
    }
}

TEST(DayBarsTest, ReadsTheShapesOfEachKind) {
    const QString day = u"2026-11-20 10.1 11 9 10.500 70000"_s;
    const QString sina = u"sina"_s, tencent = u"tencent"_s, eastmoney = u"eastmoney"_s;
    const QByteArray loose =
        "[{day:'2026-11-20',open:'10.1', high:'11',low:'9',close:'10.500',volume:'70000'}]";
    const QByteArray strict =
        R"([{"day":"2026-11-20","open":"10.1","high":"11","low":"9","close":"10.500",)"
        R"("volume":"70000"}])";
    const auto ofTencent = [](const QByteArray& code, const QByteArray& rows) -> QByteArray {
        return R"({"code":0,"msg":"","data":{")" + code + R"(":{"day":[)" + rows +
               R"(],"qt":{}}}})";
    };
    const QByteArray row = R"(["2026-11-20","10.1","10.500","11","9","700.00"])";
    const QByteArray wrapped =
        R"(["2026-11-19",{"a":1},"9","9","9","1"],)" + row.chopped(1) + R"(,{"nd":"2025"}])";
    const auto ofEastmoney = [](const QByteArray& market) -> QByteArray {
        return R"({"rc":0,"data":{"code":"600000","market":)" + market +
               R"(,"klines":["2026-11-20,10.1,10.500,11,9,700,1234.5,1,1,1,1"]}})";
    };
    const std::tuple<const char*, QString, QByteArray, QString> cases[] = {
        {"strict", sina, strict, day},
        {"JavaScript's keys and quotes", sina, loose, day},
        {"an unknown code", sina, "null\n", QString()},
        {"none", sina, "[]", QString()},
        {"a word on the asker", sina, R"({"__ERROR":"banned"})", noBars},
        {"a page", sina, "<html>502</html>", noBars},
        {"nothing", sina, "", noBars},
        {"close before high and low, lots", tencent, ofTencent("sh600000", row), day},
        {"a dividend, and a row that is wrapped", tencent, ofTencent("sh600000", wrapped), day},
        {"another code", tencent, ofTencent("sz000001", row), noBars},
        {"refuses in words", tencent, R"({"code":1,"msg":"bad","data":[]})", u"bad"_s},
        {"no data", tencent, R"({"code":0,"msg":"","data":[]})", noBars},
        {"close before high and low, lots", eastmoney, ofEastmoney("1"), day},
        {"another market", eastmoney, ofEastmoney("0"), noBars},
        {"an unknown code", eastmoney, R"({"rc":100,"data":null})", QString()},
        {"no answer", eastmoney, "{}", noBars},
    };
    for (const auto& [name, kind, reply, days] : cases) {
        EXPECT_EQ(words(barKind(kind)->read(reply, u"SH600000"_s)), days)
            << kind.toStdString() << ' ' << name;
    }
}

TEST(DayBarsTest, DaysThatCannotStandAreNone) {
    const auto bar = [](int day, double high = 11, double close = 10) {
        return DayBar{{2026, 11, day}, 10, high, 9, close, 1, {}, u"x"_s};
    };
    // Read at that hour: the days that are left, or a word of the fault.
    const std::tuple<const char*, QList<DayBar>, int, QString> cases[] = {
        {"those about the range are dropped", {bar(9), bar(10), bar(20), bar(21)}, 10, u"10 20"_s},
        {"today's is not over", {bar(23), bar(24)}, 14, u"23"_s},
        {"today's is over", {bar(23), bar(24)}, 15, u"23 24"_s},
        {"from the future", {bar(23), bar(25)}, 15, u"还没有到"_s},
        {"twice", {bar(13), bar(13)}, 10, u"次序"_s},
        {"out of order", {bar(16), bar(13)}, 10, u"次序"_s},
        {"damage outside the range", {bar(9, 1), bar(13)}, 10, u"13"_s},
        {"close above high", {bar(13, 11, 12)}, 10, u"数字"_s},
        {"close below low", {bar(13, 11, 8)}, 10, u"数字"_s},
        {"no number", {bar(13, 11, std::nan(""))}, 10, u"数字"_s},
        {"no date", {DayBar()}, 10, u"日期"_s},
        {"without bounds", {bar(13, 1e300)}, 10, u"数字"_s},
        {"volume below nothing", {DayBar{{2026, 11, 13}, 1, 1, 1, 1, -1, {}, {}}}, 10, u"数字"_s},
    };
    for (const auto& [name, bars, hour, result] : cases) {
        const QDate last = hour == 10 ? QDate(2026, 11, 20) : QDate(2026, 11, 24);
        const ReadBars checked = checkedBars(
            {bars, {}},
            {u"SH600000"_s, QDate(2026, 11, 10), last, {{2026, 11, 24}, QTime(hour, 0)}});
        const QStringList days = textsOf(
            checked.bars, [](const DayBar& left) { return QString::number(left.day.day()); });
        if (checked.fault.isEmpty()) {
            EXPECT_EQ(days.join(u' '), result) << name;
        } else {
            EXPECT_TRUE(days.isEmpty());
            EXPECT_TRUE(holds(checked.fault, result)) << name;
        }
    }
}

// Two services of Sina's kind, the second of which answers.
TEST(DayBarsTest, TheNextOneIsAskedWhereOneBringsNothing) {
    using Outcome = HttpReply::Outcome;
    const auto answer = [](const QByteArray& body) {
        return HttpReply{Outcome::answered, 200, body};
    };
    const HttpReply silence = {Outcome::silent, 0, {}}, limited = {Outcome::limited, 456, {}};
    const HttpReply page = answer("<html>"), none = answer("null");
    const HttpReply damage = answer(R"([{"day":"2026-11-20","open":"2","high":"1","low":"2"}])");
    const HttpReply day = answer(
        R"([{"day":"2026-11-20","open":"2","high":"2","low":"2","close":"2","volume":"2"}])");
    const struct {
        const char* what;
        HttpReply first, second;
        std::optional<int> days;
        qsizetype lacks;
        bool turnedAway;
    } cases[] = {
        {"silence", silence, day, 1, 1, false}, {"limited", limited, day, 1, 1, true},
        {"a page", page, day, 1, 1, false},     {"damage", damage, day, 1, 1, false},
        {"no days", none, day, 0, 0, false},    {"nobody", limited, silence, {}, 2, true},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.what);
        FakeHttp http;
        http.instead = [&](const QString&) {
            return http.addresses.last().startsWith(u"http://a"_s) ? it.first : it.second;
        };
        const FakeClock clock;
        const DayBars bars(
            http, clock,
            {{u"http://a"_s, {}, 0, 1, 0, u"sina"_s}, {u"http://b"_s, {}, 0, 1, 0, u"sina"_s}});
        const BarsReply reply =
            outcomeOf(bars.fetch(u"SH600000"_s, QDate(2026, 11, 1), QDate(2026, 11, 23), {}));
        EXPECT_EQ(reply.days ? std::optional(reply.days->size()) : std::nullopt, it.days);
        EXPECT_EQ(reply.lacks.filter(u"http://"_s).size(), it.lacks);
        EXPECT_EQ(reply.turnedAway, it.turnedAway);
        EXPECT_EQ(http.paths.size(), it.days == 0 ? 1 : 2) << "no days are an answer";
    }
}

}  // namespace guanchao
