// A list that a service tells page by page. Nothing is raised but Cancelled.
#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <functional>
#include <optional>
#include <stop_token>

#include "platform/http_client.h"

namespace guanchao {

// More than any list of stocks has.
inline constexpr int mostListPages = 100;

// One reply: its rows, or why it is none, in Chinese.
template <typename Row>
struct ListPage {
    QList<Row> rows;
    QString fault;
    std::optional<qsizetype> total = {};  // rows of all pages, where the reply tells it
};

// Takes the row over into the page; false, with its fault, for one that can't be.
template <typename Row>
bool takeRow(ListPage<Row>& page, Row row, QString (*faultOf)(const Row&)) {
    page.rows << row;
    page.fault = faultOf(row);
    return page.fault.isEmpty();
}

template <typename Row>
struct ListQuestion {
    std::function<QString(int page)> path;  // pages count from 1
    std::function<ListPage<Row>(const QByteArray& body)> read;
    qsizetype fullPage = 0;                           // how many rows the service puts on a page
    std::optional<qsizetype> expected = {};           // how many rows it has told elsewhere
    std::function<void(qsizetype rows)> onPage = {};  // hears how many have come
};

// The whole list or none of it.
template <typename Row>
struct ListReply {
    std::optional<QList<Row>> rows;
    QString lack;              // why there is none, in Chinese
    QString restsFor = {};     // why the service answers later only, in Chinese; empty if not
    bool unreachable = false;  // there is no way to it
};

// Whether nothing can be behind this page. Where no total is told the end is an empty page, which
// needn't be asked for once as many as expected are there and the page isn't full.
template <typename Row>
bool isLastPage(const ListPage<Row>& page, qsizetype rows, const ListQuestion<Row>& question) {
    if (page.total) {
        return rows >= *page.total;
    }
    const bool isShort = page.rows.size() < question.fullPage;
    return page.rows.isEmpty() || (isShort && question.expected && rows >= *question.expected);
}

// Why the page can't follow the one before; empty if it can.
template <typename Row>
QString faultBehind(const QList<Row>& before, const ListPage<Row>& page, int number,
                    qsizetype rows) {
    if (!page.fault.isEmpty()) {
        return page.fault;
    }
    if (page.rows.isEmpty() && page.total.value_or(rows) > rows) {
        return QStringLiteral("只答了 %1 条，应当有 %2 条").arg(rows).arg(*page.total);
    }
    if (!page.rows.isEmpty() && page.rows == before) {
        return QStringLiteral("第 %1 页和前一页一样").arg(number);
    }
    return number == mostListPages ? QStringLiteral("超过 %1 页").arg(number) : QString();
}

template <typename Row>
QCoro::Task<ListReply<Row>> fetchPages(HttpClient& http, Service service,
                                       ListQuestion<Row> question, std::stop_token stop) {
    ListReply<Row> reply;
    QList<Row> rows;
    QList<Row> before;
    for (int number = 1;; ++number) {
        const QString path = question.path(number);
        const HttpReply answer = co_await http.get(service, path, stop);
        if (!answer.answered()) {
            reply.lack = failureWords(answer);
            if (answer.outcome == HttpReply::Outcome::limited) {
                reply.restsFor = reply.lack;
            } else if (answer.outcome == HttpReply::Outcome::resting) {
                reply.restsFor = answer.reason;
            }
            reply.unreachable = answer.outcome == HttpReply::Outcome::unreachable;
            co_return reply;
        }
        const ListPage<Row> page = question.read(answer.body);
        reply.lack = faultBehind(before, page, number, rows.size());
        if (!reply.lack.isEmpty()) {
            co_return reply;
        }
        rows << page.rows;
        before = page.rows;
        if (question.onPage) {
            question.onPage(rows.size());
        }
        if (isLastPage(page, rows.size(), question)) {
            reply.rows = rows;
            co_return reply;
        }
    }
}

}  // namespace guanchao
