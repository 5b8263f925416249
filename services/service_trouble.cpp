#include "services/service_trouble.h"

#include <algorithm>

#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString sinceWords(const QDateTime& since, const QDateTime& now) {
    return since.toString(since.date() == now.date() ? u"hh:mm"_s : u"MM-dd hh:mm"_s);
}

// Empty if the service that is asked first doesn't fail.
QString troubleOf(const QString& purpose, const QList<Service>& services, const ServiceWatch& watch,
                  const QDateTime& now) {
    const auto used =
        std::ranges::find_if_not(services, [&](const Service& it) { return watch.isFailing(it); });
    if (used == services.begin()) {
        return {};
    }
    const ServiceWatch::State first = watch.stateOf(services.first());
    const QString words =
        u"%1：%2 %3 起%4"_s.arg(purposeName(purpose), serviceName(services.first()),
                                sinceWords(first.failsSince, now), first.reason);
    if (used == services.end()) {
        return services.size() > 1 ? words + u"，其余的也读不到"_s : words;
    }
    const bool hasAnswered = watch.stateOf(*used).answered >= first.failsSince;
    return hasAnswered ? words + u"，在用"_s + serviceName(*used) : words;
}

}  // namespace

QStringList troubleLines(const Services& services, const ServiceWatch& watch,
                         const QDateTime& now) {
    QStringList lines = {troubleOf(u"quote"_s, services.quote, watch, now),
                         troubleOf(u"history"_s, services.history, watch, now)};
    lines.removeAll(QString());
    return lines;
}

}  // namespace guanchao
