// The days of one stock for its chart: those of the own history where they reach up to now, and
// else those of the day-history services, with their factors; behind them the day that goes on, as
// the quote services tell it.
#pragma once

#include <QCoro/QCoroTask>
#include <optional>
#include <stop_token>

#include "market/stored_candles.h"
#include "platform/clock.h"
#include "platform/http_client.h"
#include "services/services.h"

namespace guanchao {

struct CandleReply {
    QList<Candle> days;  // oldest first; none where nobody has any
    QString from;        // who told them, in Chinese
    QString lack;        // what is missing and why, in Chinese; empty if nothing is
};

class CandleSource {
public:
    CandleSource(HttpClient& http, const Clock& clock, const Services& services,
                 const StoredCandles& stored)
        : http_(http), clock_(clock), services_(services), stored_(stored) {}

    // About ten years. `dm` with its exchange, in upper case. Where a day is asked for that the own
    // history has, its days are given, up to now or not: what is told of that day comes from there.
    // Nothing is raised but Cancelled.
    QCoro::Task<CandleReply> fetch(QString dm, QDate around, std::stop_token stop) const;

private:
    QCoro::Task<CandleReply> daysThatAreOver(QString dm, QDate around, std::stop_token stop) const;
    QCoro::Task<CandleReply> fromStore(QString dm, std::stop_token stop) const;
    QCoro::Task<CandleReply> fromServices(QString dm, std::stop_token stop) const;
    QCoro::Task<std::optional<Candle>> dayThatGoesOn(QString dm, Candle last,
                                                     std::stop_token stop) const;

    HttpClient& http_;
    const Clock& clock_;
    const Services& services_;
    const StoredCandles& stored_;
};

}  // namespace guanchao
