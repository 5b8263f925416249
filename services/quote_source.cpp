#include "services/quote_source.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "formats/gbk.h"
#include "services/quote_kind.h"
#include "services/quote_reply.h"
#include "services/quote_tencent.h"
#include "services/service_names.h"

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

// Each line is known by its variable.
bool isOf(QStringView line, const QString& code) {
    const QStringView variable = line.first(std::max<qsizetype>(line.indexOf(u'='), 0));
    return variable.endsWith(code, Qt::CaseInsensitive);
}

// Tells a service's word on the codes from the page of a portal or a word on the asker. Each piece
// is known by its variable: a page of megabytes is looked through once.
bool isAnswerTo(const QString& codes, const QString& lines) {
    const QStringList asked = codes.split(u',', Qt::SkipEmptyParts);
    for (const QStringView line : QStringView(lines).tokenize(u';')) {
        if (std::ranges::any_of(asked, [&](const QString& code) { return isOf(line, code); })) {
            return true;
        }
    }
    return false;
}

bool isWhole(QStringView line) {
    return line.trimmed().endsWith(u'"') && line.contains(u"=\""_s);
}

// Takes the codes that have a line out of those that are left, and gives them. A line that breaks
// off is none.
QStringList takeTold(QStringList& left, const QString& lines) {
    QStringList told;
    for (const QStringView line : QStringView(lines).tokenize(u';')) {
        const auto code = std::ranges::find_if(
            left, [&](const QString& it) { return isWhole(line) && isOf(line, it); });
        if (code != left.end()) {
            told << *code;
            left.erase(code);
        }
    }
    return told;
}

QString withoutLinesOf(const QStringList& codes, const QString& lines) {
    QString kept;
    for (const QStringView line : QStringView(lines).tokenize(u';', Qt::SkipEmptyParts)) {
        if (std::ranges::none_of(codes, [&](const QString& code) { return isOf(line, code); })) {
            kept += line.toString() + u';';
        }
    }
    return kept;
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
    std::optional<QuotesReply> answer;
    std::optional<QuotesReply> failure;
    QStringList left = codes.split(u',', Qt::SkipEmptyParts);
    left.removeDuplicates();
    QString asked = codes;
    for (const Service& service : order) {
        if (left.isEmpty() || !quoteKind(service.kind)->knows(asked)) {
            continue;
        }
        const QuotesReply reply = co_await ask(service, asked, stop);
        if (reply.lack.isEmpty()) {
            lastUntil_.remove(service.host);
            const QStringList told = takeTold(left, reply.lines);
            answer = answer ? QuotesReply{withoutLinesOf(told, answer->lines) + reply.lines,
                                          {},
                                          answer->turnedAway}
                            : reply;
            asked = withCompanion(left.join(u',') + u',');
        } else {
            http_.complain(service, reply.lack);
            lastUntil_[service.host] = clock_.now().addSecs(secondsLast);
            failure = failure ? failure : reply;
        }
    }
    const QString unasked = order.isEmpty()
                                ? allOffWords(u"quote"_s)
                                : u"在用的行情网站都没有它，请在%1里启用别的"_s.arg(servicesWindow);
    const QuotesReply none = failure.value_or(QuotesReply{{}, unasked, false});
    co_return answer.value_or(none);
}

QCoro::Task<QuotesReply> QuoteSource::ask(Service service, QString codes,
                                          std::stop_token stop) const {
    const std::unique_ptr<QuoteKind> kind = quoteKind(service.kind);
    const QString path = kind->path(codes);
    const HttpReply reply = co_await http_.get(service, path, stop);
    QuotesReply read;
    read.turnedAway = reply.turnedAway();
    if (!reply.answered()) {
        const bool rests = reply.outcome == HttpReply::Outcome::resting;
        const QString words = failureWords(reply);
        read.lack = rests ? lineOn(service, words) : words;
        co_return QuotesReply(read);
    }
    read.lines = kind->lines(reply.body, codes);
    if (!isAnswerTo(codes, read.lines)) {
        read.lack = read.lines.isEmpty() ? u"应答是空的"_s : u"应答里没有行情"_s;
    }
    co_return QuotesReply(read);
}

}  // namespace guanchao
