#include "collector/page_search.h"

#include "collector/job.h"
#include "collector/search_page.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

PageSearch::PageSearch(const RunOrder& order, const CollectorSettings& settings,
                       const Service& service)
    : settings_(settings),
      customDays_(order.customDays),
      address_(order.yinqingurl, service, settings.timeoutSeconds) {}

std::optional<QString> PageSearch::nextPath(const QString& words,
                                            const QList<QByteArray>& pages) const {
    QString custom = settings_.customPeriod;
    QStringList periods = {settings_.onePeriod, settings_.allPeriod};
    if (customDays_ > 0) {
        periods << custom.replace(u"tihuantianshu"_s, QString::number(customDays_));
    }
    return pages.size() < periods.size()
               ? std::optional(address_.path(words, periods[pages.size()]))
               : std::nullopt;
}

std::optional<Fault> PageSearch::faultOf(const QString&, qsizetype, const QByteArray& page) const {
    const SearchPage read(page);
    if (read.results(settings_)) {
        return std::nullopt;
    }
    return faultOfText(read.text(), settings_.person, nothingFound);
}

FoundNews PageSearch::find(const QString& words, const QList<QByteArray>& pages) const {
    const auto results = [&](qsizetype page) {
        return page < pages.size() ? SearchPage(pages[page]).results(settings_).value_or(0) : 0;
    };
    return {{results(0), results(1), results(2), customDays_}, words};
}

// The very page that the window of the commodities opens.
QString PageSearch::firstPath(const QString& words) const {
    return address_.path(words, settings_.allPeriod);
}

QString PageSearch::textOf(const QString&, const QByteArray& page) const {
    return SearchPage(page).text();
}

}  // namespace guanchao
