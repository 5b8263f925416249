#include "collector/news_search.h"

#include "collector/search_page.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsSearch::NewsSearch(const RunOrder& order, const CollectorSettings& settings,
                       const Service& search)
    : settings_(settings),
      customDays_(order.customDays),
      address_(order.yinqingurl, search, settings.timeoutSeconds) {}

QStringList NewsSearch::paths(const QString& words) const {
    QStringList paths = {address_.path(words, settings_.onePeriod),
                         address_.path(words, settings_.allPeriod)};
    if (customDays_ > 0) {
        QString period = settings_.customPeriod;
        paths << address_.path(words,
                               period.replace(u"tihuantianshu"_s, QString::number(customDays_)));
    }
    return paths;
}

bool NewsSearch::answers(const QByteArray& page) const {
    return SearchPage(page).results(settings_).has_value();
}

NewsCounts NewsSearch::counts(const QList<QByteArray>& pages) const {
    const auto results = [&](qsizetype page) {
        return page < pages.size() ? SearchPage(pages[page]).results(settings_).value_or(0) : 0;
    };
    return {results(0), results(1), results(2), customDays_};
}

}  // namespace guanchao
