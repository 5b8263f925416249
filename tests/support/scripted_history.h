// The services of day history, factors and quotes as a small market that a test writes down.
#pragma once

#include <QDate>
#include <QMap>
#include <QStringList>
#include <functional>

#include "base/later.h"
#include "formats/gbk.h"
#include "platform/http_client.h"
#include "services/services.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

class ScriptedHistory : public HttpClient {
public:
    using Outcome = HttpReply::Outcome;

    // By upper-case code: the close of each day, oldest first. Open, high and low are the same.
    QMap<QString, QMap<QDate, double>> closes;
    QDate today = QDate(2026, 11, 24);  // later days are not there yet
    // The days from which on a factor holds.
    QMap<QString, QMap<QDate, double>> factors;
    // Today's quotes: former close and last price; the day is that of `quoteDay`.
    QMap<QString, QPair<double, double>> quotes;
    QString quoteMoment = u"2026-11-24,15:00:03"_s;
    // Of a code's history or factors; answered if it says nothing else.
    std::function<Outcome(const QString& dm)> outcome;
    std::function<void(const QString& dm)> onGet;
    std::shared_ptr<Later<bool>> gate;  // the next request waits for it
    QStringList asked;                  // "history SH600000", "quotes 2"

    // One of each kind, in the forms of Sina.
    static Services services() {
        Services services;
        services.history = {service(u"http://history"_s)};
        services.factors = {service(u"http://factors"_s)};
        services.quote = {service(u"http://quotes"_s)};
        return services;
    }

    // The weekdays from the first to the last.
    static QList<QDate> weekdays(QDate first, const QDate& last) {
        QList<QDate> days;
        for (; first <= last; first = first.addDays(1)) {
            if (first.dayOfWeek() <= Qt::Friday) {
                days << first;
            }
        }
        return days;
    }

    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override {
        const QString dm = codeOf(path);
        asked << service.host.section(u'/', -1) + u' ' + dm;
        if (onGet) {
            onGet(dm);
        }
        endIfStopped(stop);
        if (const auto opened = gate) {
            co_await opened->orStop(stop);
        }
        HttpReply reply;
        reply.outcome = outcome ? outcome(dm) : Outcome::answered;
        if (reply.answered()) {
            reply.body = bodyOf(service, path, dm);
        }
        co_return HttpReply(reply);
    }

private:
    static Service service(const QString& host) { return {host, {}, 0, 1, 0, u"sina"_s}; }

    static QString codeOf(const QString& path) {
        if (path.startsWith(u"/list="_s)) {
            return path.section(u'=', 1).chopped(1).toUpper();
        }
        const QString code = path.contains(u"hfq.js"_s)
                                 ? path.section(u'/', -2, -2)
                                 : path.section(u"symbol="_s, 1).section(u'&', 0, 0);
        return code.toUpper();
    }

    QByteArray bodyOf(const Service& service, const QString& path, const QString& dm) const {
        if (path.startsWith(u"/list="_s)) {
            return quoteLines(dm.split(u','));
        }
        return service.host == u"http://factors"_s ? factorRows(dm) : dayRows(dm);
    }

    QByteArray dayRows(const QString& dm) const {
        if (!closes.contains(dm)) {
            return "null";
        }
        QStringList rows;
        for (auto day = closes[dm].cbegin(); day != closes[dm].cend() && day.key() <= today;
             ++day) {
            rows << u"{\"day\":\"%1\",\"open\":\"%2\",\"high\":\"%2\",\"low\":\"%2\",\"close\":\"%"
                    u"2\","
                    u"\"volume\":\"500\"}"_s.arg(day.key().toString(Qt::ISODate))
                        .arg(day.value(), 0, 'f', 3);
        }
        return '[' + rows.join(u',').toUtf8() + ']';
    }

    QByteArray factorRows(const QString& dm) const {
        QStringList rows = {u"{\"d\":\"1900-01-01\",\"f\":\"1.0\"}"_s};
        for (auto it = factors[dm].cbegin(); it != factors[dm].cend(); ++it) {
            rows.prepend(u"{\"d\":\"%1\",\"f\":\"%2\"}"_s.arg(it.key().toString(Qt::ISODate))
                             .arg(it.value()));
        }
        return u"var %1hfq={\"total\":1,\"data\":[%2]}"_s.arg(dm.toLower(), rows.join(u','))
            .toUtf8();
    }

    QByteArray quoteLines(const QStringList& codes) const {
        QString text;
        for (const QString& dm : codes) {
            const auto [former, last] = quotes.value(dm);
            const QString price = QString::number(last);
            text += u"var hq_str_%1=\"x,%2,%3,%2,%2,%2,0,0,700,8000,%4%5,00\";\n"_s.arg(
                dm.toLower(), price, QString::number(former), u"0,"_s.repeated(20), quoteMoment);
        }
        return gbkFromText(text);
    }
};

}  // namespace guanchao
