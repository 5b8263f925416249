#include "services/quote_source.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "formats/gbk.h"
#include "services/quote_kind.h"
#include "services/quote_reply.h"
#include "services/quote_tencent.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 secondsLast = 90;

class SinaQuotes : public QuoteKind {
public:
    bool knows(const QString& /*codes*/) const override { return true; }
    QString path(const QString& codes) const override { return u"/list="_s + codes; }
    QString lines(const QByteArray& body, const QString& /*codes*/) const override {
        return textFromGbk(body);
    }
};

// Tells a service's word on the codes from the page of a portal or a word on the asker. Each piece
// is known by its variable: a page of megabytes is looked through once.
bool isAnswerTo(const QString& codes, const QString& lines) {
    const QStringList asked = codes.split(u',', Qt::SkipEmptyParts);
    for (const QStringView line : QStringView(lines).tokenize(u';')) {
        const QStringView variable = line.first(std::max<qsizetype>(line.indexOf(u'='), 0));
        if (std::ranges::any_of(asked, [&](const QString& code) {
                return variable.endsWith(code, Qt::CaseInsensitive);
            })) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::unique_ptr<QuoteKind> quoteKind(const QString& name) {
    if (name == u"tencent"_s) {
        return std::make_unique<TencentQuotes>();
    }
    return std::make_unique<SinaQuotes>();
}

QString withCompanion(const QString& list) {
    const QString index = u"sh000001,"_s;
    if (list.count(u',') > 1) {
        return list;
    }
    return list + (list == index ? u"sz399001,"_s : index);
}

QuoteSource::QuoteSource(HttpClient& http, const Clock& clock, QList<Service> services)
    : http_(http), clock_(clock), services_([list = std::move(services)] { return list; }) {}

QuoteSource::QuoteSource(HttpClient& http, const Clock& clock, const Services& services)
    : http_(http), clock_(clock), services_([&services] { return services.quote; }) {}

bool QuoteSource::isLast(const Service& service) const {
    const QDateTime until = lastUntil_.value(service.host);
    return until.isValid() && until > clock_.now();
}

QList<Service> QuoteSource::inOrder() const {
    QList<Service> order = services_();
    std::stable_partition(order.begin(), order.end(),
                          [this](const Service& it) { return !isLast(it); });
    return order;
}

QCoro::Task<QuotesReply> QuoteSource::fetch(QString codes, std::stop_token stop) {
    const QList<Service> order = inOrder();
    std::optional<QuotesReply> first;
    for (const Service& service : order) {
        if (!quoteKind(service.kind)->knows(codes)) {
            continue;
        }
        const QuotesReply reply = co_await ask(service, codes, stop);
        if (reply.lack.isEmpty()) {
            lastUntil_.remove(service.host);
            co_return QuotesReply(reply);
        }
        http_.complain(service, reply.lack);
        lastUntil_[service.host] = clock_.now().addSecs(secondsLast);
        first = first ? first : reply;
    }
    co_return first.value_or(QuotesReply{{}, failureWords({}), false});
}

QCoro::Task<QuotesReply> QuoteSource::ask(Service service, QString codes,
                                          std::stop_token stop) const {
    const std::unique_ptr<QuoteKind> kind = quoteKind(service.kind);
    const QString path = kind->path(codes);
    const HttpReply reply = co_await http_.get(service, path, stop);
    QuotesReply read;
    read.turnedAway = reply.turnedAway();
    if (!reply.answered()) {
        read.lack = failureWords(reply);
        co_return QuotesReply(read);
    }
    read.lines = kind->lines(reply.body, codes);
    if (!isAnswerTo(codes, read.lines)) {
        read.lack = read.lines.isEmpty() ? u"应答是空的"_s : u"应答里没有行情"_s;
    }
    co_return QuotesReply(read);
}

}  // namespace guanchao
