#include "services/factors.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <functional>

#include "services/loose_json.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double largestFactor = 1e6;

bool stands(const QList<Factor>& factors) {
    const bool areFactors = std::ranges::all_of(factors, [](const Factor& it) {
        return it.day.isValid() && it.factor > 0 && it.factor <= largestFactor;
    });
    return areFactors && std::ranges::is_sorted(factors, std::greater(), &Factor::day);
}

// Behind its last brace, before the comments.
qsizetype endOfAssignment(const QByteArray& body) {
    const qsizetype comment = body.indexOf("/*");
    return body.lastIndexOf('}', comment) + 1;
}

}  // namespace

double FactorList::on(const QDate& day) const {
    const auto found =
        std::ranges::find_if(factors_, [&](const Factor& it) { return it.day <= day; });
    return found == factors_.end() ? 1 : found->factor;
}

std::optional<FactorList> readFactors(const QByteArray& body, const QString& dm) {
    const QByteArray assignment = body.first(endOfAssignment(body));
    const qsizetype equals = assignment.indexOf('=');
    const QByteArray variable = dm.toLower().toLatin1() + "hfq";
    if (equals < 0 || !assignment.first(equals).contains(variable)) {
        return std::nullopt;
    }
    const QJsonValue rows = readLooseJson(assignment.sliced(equals + 1)).object()[u"data"_s];
    QList<Factor> factors;
    for (const auto& row : rows.toArray()) {
        factors << Factor{QDate::fromString(row[u"d"_s].toString(), Qt::ISODate),
                          numberIn(numberWords(row[u"f"_s]))};
    }
    return rows.isArray() && stands(factors) ? std::optional(FactorList(factors)) : std::nullopt;
}

QCoro::Task<std::optional<FactorList>> Factors::fetch(QString dm, std::stop_token stop) const {
    const QString path = u"/realstock/company/%1/hfq.js"_s.arg(dm.toLower());
    const HttpReply reply = co_await http_.get(service_, path, stop);
    if (reply.hasNoPage()) {
        co_return FactorList();
    }
    const std::optional<FactorList> factors =
        reply.answered() ? readFactors(reply.body, dm) : std::nullopt;
    if (!factors) {
        http_.complain(service_, u"应答里没有复权因子"_s);
    }
    co_return std::optional<FactorList>(factors);
}

}  // namespace guanchao
