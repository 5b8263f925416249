#include "services/service_watch.h"

#include "services/service_trouble.h"
#include "tests/support/fakes.h"

namespace guanchao {

class ServiceWatchTest : public ::testing::Test {
protected:
    ServiceWatchTest() {
        // Of one host; each purpose and kind counts by itself.
        services_.quote = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s, u"quote"_s},
                           {u"http://h"_s, {}, 0, 1, 0, u"tencent"_s, u"quote"_s}};
        services_.history = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s, u"history"_s}};
    }

    // Asked in that order, each as a moment in seconds, a service (s sina, t tencent) and what
    // becomes of the request: a answered, c answered and complained of, f failed, r at rest.
    QString after(const QString& asked) {
        using enum HttpReply::Outcome;
        const QHash<QChar, HttpReply::Outcome> outcomes = {
            {u'a', answered}, {u'c', answered}, {u'f', silent}, {u'r', resting}};
        ServiceWatch watch(http_, clock_);
        const QDateTime start = clock_.moment;
        for (const QString& it : asked.split(u' ')) {
            clock_.moment = start.addSecs(it.chopped(2).toInt());
            const Service service = services_.quote[it.contains(u's') ? 0 : 1];
            const HttpReply reply{outcomes[it.back()], 0, {}};
            http_.instead = [&](const QString&) { return reply; };
            outcomeOf(watch.get(service, {}, {}));
            if (!it.endsWith(u'a')) {
                watch.complain(service, u"应答里没有行情"_s);
            }
            QCoreApplication::processEvents();
        }
        clock_.moment = start;
        return troubleLines(services_, watch, start.addSecs(600)).join(u'|');
    }

    FakeClock clock_;
    FakeHttp http_;
    Services services_;
};

TEST_F(ServiceWatchTest, TellsWhatFailsTimeAndAgain) {
    const QString nothing, silent = u"行情：新浪 10:00 起没有应答"_s;
    const std::tuple<const char*, QString, QString> cases[] = {
        {"a single miss, of requests under way together", u"0sf 0sf 0sf 1sf 1sf"_s, nothing},
        {"again after a while", u"0sf 1ta 90sf"_s, silent + u"，在用腾讯"_s},
        {"five in a row, each a second behind", u"0sf 1sf 2sf 3sf 4sf 5sf 6sf 7sf 8sf"_s, silent},
        {"it is back", u"0sf 90sf 180sa"_s, nothing},
        {"a rest is neither back nor a failure", u"0sf 90sf 180sr"_s, silent},
        {"one miss and a rest", u"0sf 90sr 180sr"_s, nothing},
        {"nobody can read it", u"0sc 90sc 91ta"_s,
         u"行情：新浪 10:00 起应答里没有行情，在用腾讯"_s},
        {"counted once, though it is complained of", u"0sf 3sf 6sf 9sf"_s, nothing},
        {"the one behind is of no matter", u"0sa 1tf 90tf"_s, nothing},
        {"both", u"60sf 61tf 150sf 151tf"_s, u"行情：新浪 10:01 起没有应答，其余的也读不到"_s},
    };
    for (const auto& [name, asked, words] : cases) {
        EXPECT_EQ(after(asked), words) << name;
    }
}

TEST_F(ServiceWatchTest, WhatFailsIsLoggedAsItBeginsAndAsItEndsAndNoTimeBetween) {
    const QString silent = u"没有应答"_s;
    const auto end = [](const char* how, const char* begun, int count, const QString& why) {
        return u"%1，11-24 10:0%2 起失败 %3 次（%4）"_s.arg(QString::fromUtf8(how))
            .arg(QString::fromUtf8(begun))
            .arg(count)
            .arg(why);
    };
    const std::tuple<const char*, QString, QStringList> cases[] = {
        {"it is back", u"0sf 1sf 30sf 90sa 91sa"_s, {silent, end("又应答了", "0:00", 3, silent)}},
        {"back at once, by the end", u"0sf 5sa"_s, {silent, end("又应答了", "0:00", 1, silent)}},
        {"never", u"0sf 9sf 900sr 5000sf"_s, {silent, end("还没有应答", "0:00", 3, silent)}},
        {"one miss and the end", u"0sf"_s, {silent}},
        {"by turns",
         u"0sf 9sa 20sf 29sa 40sf 49sa 60sf"_s,
         {silent, end("还没有应答", "0:00", 4, silent)}},
        {"a portal answers",
         u"0sc 90sc 180sc 270sc"_s,
         {u"应答里没有行情"_s, end("还没有应答", "0:00", 4, u"应答里没有行情"_s)}},
        {"for two reasons, and again",
         u"0sf 30sc 120sa 200sf"_s,
         {silent, end("又应答了", "0:00", 2, u"没有应答，应答里没有行情"_s), silent}},
        {"each by itself",
         u"0sf 1tf 90sa"_s,
         {silent, u"行情 腾讯 http://h|没有应答"_s, end("又应答了", "0:00", 1, silent)}},
    };
    for (const auto& [name, asked, logged] : cases) {
        KeptLog log(LogKind::service);
        after(asked);
        EXPECT_EQ(log.lines.replaceInStrings(u"行情 新浪 http://h|"_s, QString()), logged) << name;
    }
}

}  // namespace guanchao
