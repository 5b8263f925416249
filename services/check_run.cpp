#include "services/check_run.h"

#include <utility>

#include "base/pause.h"
#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownOfBody = 80;

}  // namespace

CheckRun::CheckRun(HttpClient& http, const Clock& clock, std::chrono::milliseconds pause, Show show,
                   Begin begin)
    : http_(http), clock_(clock), pause_(pause), show_(std::move(show)), begin_(std::move(begin)) {}

QCoro::Task<> CheckRun::run(QList<Check> checks, std::stop_token stop) {
    for (const Check& check : checks) {
        QList<Service> services = check.services;
        services.removeIf([](const Service& it) { return it.host.isEmpty(); });
        if (services.isEmpty()) {
            show_({check, {}, {false, u"services.ini 没有给它网址"_s}});
        }
        for (const Service& service : services) {
            begin_(check, service);
            co_await ask(check, service, stop);
            co_await guanchao::pause(pause_, stop);
        }
    }
}

QCoro::Task<> CheckRun::ask(Check check, Service service, std::stop_token stop) {
    http_.forget();
    const CheckDesk desk = {http_, clock_};
    Finding finding = co_await check.ask(desk, service, stop);
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
