#include "collector/headline_search.h"

#include <algorithm>
#include <utility>

namespace guanchao {

HeadlineSearch::HeadlineSearch(const RunOrder& order, const CollectorSettings& settings,
                               Service service, const Clock& clock)
    : clock_(clock),
      customDays_(order.customDays),
      mostPages_(settings.headlinePages),
      person_(settings.person),
      service_(std::move(service)) {
    if (service_.timeoutSeconds == 0) {
        service_.timeoutSeconds = settings.timeoutSeconds;
    }
}

HeadlinesPage HeadlineSearch::pageOf(const QString& words, const QByteArray& page,
                                     int number) const {
    const auto read = std::ranges::find_if(read_, [&](const ReadPage& it) {
        return it.words == words && it.number == number && it.page == page;
    });
    if (read != read_.end()) {
        return read->headlines;
    }
    if (number == 1) {
        read_.clear();
    }
    read_ << ReadPage{words, number, page, EastmoneyHeadlines::read(page, words, number)};
    return read_.last().headlines;
}

HeadlineCounts HeadlineSearch::countsOf(const QString& words,
                                        const QList<QByteArray>& pages) const {
    QList<HeadlinesPage> read;
    for (const QByteArray& page : pages) {
        read << pageOf(words, page, static_cast<int>(read.size()) + 1);
    }
    return {read, clock_.now()};
}

std::optional<QString> HeadlineSearch::nextPath(const QString& words,
                                                const QList<QByteArray>& pages) const {
    if (!pages.isEmpty()) {
        const HeadlineCounts counts = countsOf(words, pages);
        if (pages.size() >= mostPages_ || counts.isLastPage() || counts.reaches(longestPeriod())) {
            return std::nullopt;
        }
    }
    return EastmoneyHeadlines::path(words, static_cast<int>(pages.size()) + 1);
}

std::optional<Fault> HeadlineSearch::faultOf(const QString& words, qsizetype before,
                                             const QByteArray& page) const {
    const QString fault = pageOf(words, page, static_cast<int>(before) + 1).fault;
    if (fault.isEmpty()) {
        return std::nullopt;
    }
    return faultOfText(QString::fromUtf8(page), person_, fault);
}

FoundNews HeadlineSearch::find(const QString& words, const QList<QByteArray>& pages) const {
    const HeadlineCounts counts = countsOf(words, pages);
    const HeadlineCount one = counts.ofLast(1);
    const HeadlineCount custom = customDays_ > 0 ? counts.ofLast(customDays_) : HeadlineCount();
    const NewsNote note = {laiyuan(), one.isLowerBound, counts.all().isLowerBound,
                           custom.isLowerBound};
    return {{one.number, counts.all().number, custom.number, customDays_, note},
            words,
            counts.headlines(longestPeriod())};
}

QString HeadlineSearch::firstPath(const QString& words) const {
    return EastmoneyHeadlines::path(words, 1);
}

QString HeadlineSearch::textOf(const QString& words, const QByteArray& page) const {
    return pageOf(words, page, 1).text;
}

}  // namespace guanchao
