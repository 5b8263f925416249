#include "services/headlines_eastmoney.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <optional>

#include "services/loose_json.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString articles = u"cmsArticleWebOld"_s;
const QString timeForm = u"yyyy-MM-dd HH:mm:ss"_s;
// Newest first: hits of one minute may come in any order, but not those of other days.
constexpr qint64 mostDisorderSeconds = 86400;

QByteArray callName(const QString& keyword, int page) {
    return "jQuery" + QByteArray::number(qChecksum(keyword.toUtf8())) + '_' +
           QByteArray::number(page);
}

// What the call is given; nothing for a body that is another call, or none.
std::optional<QByteArray> argumentOf(const QByteArray& body, const QByteArray& call) {
    QByteArray text = body.trimmed();
    if (text.endsWith(';')) {
        text.chop(1);
    }
    const QByteArray head = call + '(';
    if (!text.startsWith(head) || !text.endsWith(')')) {
        return std::nullopt;
    }
    return text.sliced(head.size()).chopped(1);
}

QString webAddress(const QString& text) {
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    const bool isOfWeb = url.scheme() == u"http"_s || url.scheme() == u"https"_s;
    return isOfWeb && !url.host().isEmpty() ? url.toString(QUrl::FullyEncoded) : QString();
}

Headline readHeadline(const QJsonObject& hit) {
    return {QDateTime::fromString(hit[u"date"_s].toString(), timeForm),
            hit[u"title"_s].toString().simplified(), hit[u"mediaName"_s].toString().simplified(),
            webAddress(hit[u"url"_s].toString())};
}

QString faultOf(const QList<Headline>& headlines) {
    const Headline* before = nullptr;
    for (const Headline& it : headlines) {
        if (!it.time.isValid() || it.title.isEmpty()) {
            return u"应答里的新闻没有时间或标题"_s;
        }
        if (before && before->time.secsTo(it.time) > mostDisorderSeconds) {
            return u"应答里的新闻不是从新到旧"_s;
        }
        before = &it;
    }
    return {};
}

}  // namespace

QString EastmoneyHeadlines::path(const QString& keyword, int page) {
    const QJsonObject search = {{u"searchScope"_s, u"default"_s}, {u"sort"_s, u"time"_s},
                                {u"pageIndex"_s, page},           {u"pageSize"_s, onAPage},
                                {u"preTag"_s, QString()},         {u"postTag"_s, QString()}};
    const QJsonObject question = {{u"uid"_s, QString()},
                                  {u"keyword"_s, keyword},
                                  {u"type"_s, QJsonArray{articles}},
                                  {u"client"_s, u"web"_s},
                                  {u"clientType"_s, u"web"_s},
                                  {u"clientVersion"_s, u"curr"_s},
                                  {u"param"_s, QJsonObject{{articles, search}}}};
    const QByteArray param = QJsonDocument(question).toJson(QJsonDocument::Compact);
    return u"/search/jsonp?cb="_s + QString::fromLatin1(callName(keyword, page)) + u"&param="_s +
           QString::fromLatin1(QUrl::toPercentEncoding(QString::fromUtf8(param)));
}

HeadlinesPage EastmoneyHeadlines::read(const QByteArray& body, const QString& keyword, int page) {
    const std::optional<QByteArray> argument = argumentOf(body, callName(keyword, page));
    const QJsonObject reply = QJsonDocument::fromJson(argument.value_or(QByteArray())).object();
    if (reply.isEmpty()) {
        return {0, {}, u"应答不是所问的新闻"_s};
    }
    if (numberWords(reply[u"code"_s]) != u"0"_s) {
        return {0, {}, u"网站没有答：代码 "_s + numberWords(reply[u"code"_s])};
    }
    HeadlinesPage read;
    read.total = reply[u"hitsTotal"_s].toInteger(-1);
    const QJsonArray hits = reply[u"result"_s][articles].toArray();
    const bool isEmptyAlike = page > 1 || hits.isEmpty() == (read.total == 0);
    if (read.total < 0 || !reply[u"result"_s].isObject() || !isEmptyAlike) {
        return {0, {}, u"应答里的新闻和它说的数目不合"_s};
    }
    for (const auto& hit : hits) {
        read.headlines << readHeadline(hit.toObject());
        read.text += read.headlines.last().title + u'\n' + hit[u"content"_s].toString() + u'\n';
    }
    read.fault = faultOf(read.headlines);
    return read;
}

}  // namespace guanchao
