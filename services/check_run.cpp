#include "services/check_run.h"

#include <utility>

#include "base/pause.h"
#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownOfBody = 80;
constexpr int longestSeconds = 30;

int timeOutOf(const Service& service) {
    return service.timeoutSeconds > 0 ? service.timeoutSeconds : longestSeconds;
}

}  // namespace

CheckRun::CheckRun(HttpClient& http, const Clock& clock, std::chrono::milliseconds pause, Show show,
                   Begin begin)
    : http_(http), clock_(clock), pause_(pause), show_(std::move(show)), begin_(std::move(begin)) {}

QCoro::Task<> CheckRun::run(QList<Check> checks, std::stop_token stop) {
    int total = 0;
    std::chrono::milliseconds left{0};
    for (Check& check : checks) {
        check.services.removeIf([](const Service& it) { return it.host.isEmpty(); });
        for (const Service& it : std::as_const(check.services)) {
            left += longestOf(it);
            ++total;
        }
    }
    int asked = 0;
    for (const Check& check : std::as_const(checks)) {
        if (check.services.isEmpty()) {
            show_({check, {}, {false, u"services.ini 没有给它网址"_s}});
        }
        for (const Service& service : check.services) {
            begin_(check, service, {asked++, total, std::chrono::ceil<std::chrono::seconds>(left)});
            co_await ask(check, service, stop);
            co_await guanchao::pause(pause_, stop);
            left -= longestOf(service);
        }
    }
}

// The pause of a service lies before it where another check has just asked the same.
std::chrono::milliseconds CheckRun::longestOf(const Service& service) const {
    return std::chrono::seconds(timeOutOf(service)) +
           std::chrono::milliseconds(qRound(service.pauseSeconds * 1000)) + pause_;
}

QCoro::Task<> CheckRun::ask(Check check, Service service, std::stop_token stop) {
    http_.forget();
    const CheckDesk desk = {http_, clock_};
    Service asked = service;
    asked.timeoutSeconds = timeOutOf(service);
    Finding finding = co_await check.ask(desk, asked, stop);
    if (!finding.answers) {
        finding.words += details();
    }
    show_({check, service, finding, http_.milliseconds(), http_.last().status});
}

// The beginning of what was sent, or why nothing was.
QString CheckRun::details() const {
    if (!http_.last().reason.isEmpty()) {
        return u"："_s + http_.last().reason;
    }
    QString words = readText(http_.last().body).text.simplified().left(shownOfBody);
    words.removeIf([](QChar it) { return !it.isPrint(); });
    return words.isEmpty() ? QString() : u"；应答开头："_s + words;
}

}  // namespace guanchao
