// News that speak of a word, from Eastmoney: a JSONP call with the question as JSON, at most 100
// headlines a page, the newest first.
//   /search/jsonp?cb=jQuery1&param={"uid":"","keyword":"600519","type":["cmsArticleWebOld"],
//    "client":"web","clientType":"web","clientVersion":"curr","param":{"cmsArticleWebOld":
//    {"searchScope":"default","sort":"time","pageIndex":1,"pageSize":10,"preTag":"","postTag":""}}}
//   jQuery1({"bizCode":"","bizMsg":"","code":0,"extra":{},"hitsTotal":683,"msg":"OK","result":
//    {"cmsArticleWebOld":[{"date":"2026-05-18 16:55:00","image":"","code":"…","title":"…",
//    "content":"…","mediaName":"证券时报网","url":"…"},…]}})
// hitsTotal is the number of all hits and never more than 10,000. The reply names no word, but the
// call that it answers: so the call has a name that follows from word and page.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace guanchao {

struct Headline {
    QDateTime time;
    QString title;
    QString media;
    QString url;  // empty if it is no address of the web

    bool operator==(const Headline&) const = default;
};

struct HeadlinesPage {
    qint64 total = 0;  // hits on all pages, as far as the service counts
    QList<Headline> headlines;
    QString fault;      // why it is no answer, in Chinese
    QString text = {};  // titles and openings of the articles
};

class EastmoneyHeadlines {
public:
    static constexpr qsizetype onAPage = 100;
    // A total of so many stands for any number from there on.
    static constexpr qint64 mostCounted = 10000;

    // Pages count from 1.
    static QString path(const QString& keyword, int page);
    static HeadlinesPage read(const QByteArray& body, const QString& keyword, int page);
};

}  // namespace guanchao
