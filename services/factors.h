// 复权因子: the backward factors of Sina, /realstock/company/sh600103/hfq.js. One assignment, then
// comments, newest first:
//   var sh600103hfq={"total":9,"data":[{"d":"2019-06-03","f":"5.3000000000000000"},…,
//    {"d":"1900-01-01","f":"1.0000000000000000"}]}
// A factor holds from its day on and doesn't change any more. It belongs to Sina's own prices:
// adjusted is price × factor. A code without any dividend is not there (404) or has the last row
// alone.
#pragma once

#include <QCoro/QCoroTask>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>
#include <stop_token>

#include "platform/http_client.h"

namespace guanchao {

// The kind of history to whose prices they belong.
inline const QString pricesWithFactors = QStringLiteral("sina");

struct Factor {
    QDate day;
    double factor = 1;
};

// Of one code, newest first; without rows all prices stand as they are.
class FactorList {
public:
    FactorList() = default;
    explicit FactorList(QList<Factor> factors) : factors_(std::move(factors)) {}

    double on(const QDate& day) const;

private:
    QList<Factor> factors_;
};

// Nothing for a body that holds no factors of the code.
std::optional<FactorList> readFactors(const QByteArray& body, const QString& dm);

class Factors {
public:
    Factors(HttpClient& http, const QList<Service>& services)
        : http_(http), service_(services.value(0)) {}

    // That services.ini has a service for them.
    bool isNamed() const { return !service_.host.isEmpty(); }

    // Nothing where they can't be had, or no service is named.
    QCoro::Task<std::optional<FactorList>> fetch(QString dm, std::stop_token stop) const;

private:
    HttpClient& http_;
    Service service_;
};

}  // namespace guanchao
