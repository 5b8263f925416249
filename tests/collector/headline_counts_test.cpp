#include "collector/headline_counts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString word = u"白酒"_s;

QByteArray callIn(const QString& path) {
    return QUrlQuery(path.section(u'?', 1)).queryItemValue(u"cb"_s).toUtf8();
}

QByteArray replyTo(int page, const QByteArray& json) {
    return callIn(EastmoneyHeadlines::path(word, page)) + '(' + json + ");";
}

const QByteArray oneHit =
    R"({"code":0,"hitsTotal":683,"msg":"OK","result":{"cmsArticleWebOld":[{"date":)"
    R"("2026-11-24 09:55:00","title":"白酒 涨","mediaName":"时报","url":"http://a.b/1"}]}})";

QByteArray with(QByteArray from, const QByteArray& to) {
    QByteArray json = oneHit;
    EXPECT_TRUE(json.contains(from)) << from.toStdString();
    return json.replace(from, to);
}

}  // namespace

TEST(EastmoneyHeadlines, AWordAndAPageAreAskedForAsTheServiceWantsIt) {
    const QString path = EastmoneyHeadlines::path(u"A&B 酒"_s, 2);
    EXPECT_FALSE(path.contains(u' '));
    const QUrlQuery query(path.section(u'?', 1));
    const QByteArray param = query.queryItemValue(u"param"_s, QUrl::FullyDecoded).toUtf8();
    const QJsonObject question = QJsonDocument::fromJson(param).object();
    EXPECT_EQ(question[u"keyword"_s].toString(), u"A&B 酒"_s);
    const QJsonValue page = question[u"param"_s][u"cmsArticleWebOld"_s];
    EXPECT_EQ(page[u"pageIndex"_s].toInt(), 2);
    EXPECT_EQ(page[u"pageSize"_s].toInt(), 100);
    EXPECT_EQ(page[u"sort"_s].toString(), u"time"_s);
}

TEST(EastmoneyHeadlines, WhatIsNoAnswerCountsAsNone) {
    const QByteArray twoHits =
        oneHit.chopped(3) + ',' + R"({"date":"2026-11-26 00:00:00","title":"x"}]}})";
    const std::tuple<const char*, QByteArray, bool> cases[] = {
        {"an answer", replyTo(1, oneHit), true},
        {"a true 0", replyTo(1, R"({"code":0,"hitsTotal":0,"result":{"cmsArticleWebOld":[]}})"),
         true},
        {"a 0 in short", replyTo(1, R"({"code":0,"hitsTotal":0,"result":{}})"), true},
        {"a page for a person", "<html>请完成验证</html>", false},
        {"nothing", "", false},
        {"JSON by itself", oneHit, false},
        {"the answer for another word",
         replyTo(1, oneHit).replace(callIn(EastmoneyHeadlines::path(word, 1)),
                                    callIn(EastmoneyHeadlines::path(u"黄金"_s, 1))),
         false},
        {"the answer for another page", replyTo(2, oneHit), false},
        {"broken off", replyTo(1, oneHit).chopped(10), false},
        {"refused", replyTo(1, with("\"code\":0", "\"code\":-3")), false},
        {"no code", replyTo(1, with("\"code\":0,", "")), false},
        {"no total", replyTo(1, with("\"hitsTotal\":683,", "")), false},
        {"a total without headlines", replyTo(1, R"({"code":0,"hitsTotal":5,"result":{}})"), false},
        {"headlines without a total", replyTo(1, with("683", "0")), false},
        {"a headline without a time", replyTo(1, with("2026-11-24 09:55:00", "昨天")), false},
        {"a headline without a title", replyTo(1, with("白酒 涨", " ")), false},
        {"not newest first", replyTo(1, twoHits), false},
    };
    for (const auto& [what, body, answers] : cases) {
        const HeadlinesPage page = EastmoneyHeadlines::read(body, word, 1);
        EXPECT_EQ(page.fault.isEmpty(), answers) << what << page.fault.toStdString();
    }
    const Headline hit = EastmoneyHeadlines::read(replyTo(1, oneHit), word, 1).headlines.value(0);
    EXPECT_EQ(hit, (Headline{QDateTime(QDate(2026, 11, 24), QTime(9, 55)), u"白酒 涨"_s, u"时报"_s,
                             u"http://a.b/1"_s}));
    const QByteArray local = replyTo(1, with("http://a.b/1", "file:///etc/passwd"));
    EXPECT_EQ(EastmoneyHeadlines::read(local, word, 1).headlines.value(0).url, QString());
}

TEST(HeadlineCounts, ACountIsALowerBoundWhereMoreMayBeLeft) {
    const QDateTime now(QDate(2026, 11, 24), QTime(10, 0));
    // So many headlines, an hour between two, the newest a minute old.
    const auto page = [&](qint64 total, int first, int size) {
        HeadlinesPage made{total, {}, {}};
        for (int at = first; at < first + size; ++at) {
            made.headlines << Headline{now.addSecs(-60 - at * 3600), QString::number(at), {}, {}};
        }
        return made;
    };
    const auto words = [](const HeadlineCount& it) -> QString {
        return QString::number(it.number) + (it.isLowerBound ? u"+"_s : QString());
    };
    const struct {
        const char* what;
        QList<HeadlinesPage> pages;
        QString counts;  // of all, of a day, of a week
        bool isEnd;      // no page behind can have more of the week
    } cases[] = {
        {"none", {page(0, 0, 0)}, u"0 0 0"_s, true},
        {"all there are", {page(5, 0, 5)}, u"5 5 5"_s, true},
        {"a full page", {page(683, 0, 100)}, u"683 24 100+"_s, false},
        {"up to an older one", {page(683, 0, 100), page(683, 100, 100)}, u"683 24 168"_s, true},
        {"one comes twice", {page(150, 0, 100), page(151, 99, 51)}, u"150 24 150"_s, true},
        {"the same page again", {page(150, 0, 100), page(150, 0, 100)}, u"150 24 100+"_s, false},
        {"it gives no more", {page(683, 0, 100), page(683, 0, 0)}, u"683 24 100+"_s, true},
        {"counted no further", {page(10000, 0, 20)}, u"10000+ 20+ 20+"_s, true},
    };
    for (const auto& it : cases) {
        const HeadlineCounts counts(it.pages, now);
        const QStringList told = {words(counts.all()), words(counts.ofLast(1)),
                                  words(counts.ofLast(7))};
        EXPECT_EQ(told.join(u' '), it.counts) << it.what;
        EXPECT_EQ(counts.reaches(7) || counts.isLastPage(), it.isEnd) << it.what;
    }
}

}  // namespace guanchao
