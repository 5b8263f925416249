#include "collector/headline_counts.h"

#include <QSet>
#include <algorithm>

namespace guanchao {

HeadlineCounts::HeadlineCounts(const QList<HeadlinesPage>& pages, const QDateTime& now)
    : now_(now), total_(pages.isEmpty() ? 0 : pages.first().total) {
    QSet<QStringList> seen;
    for (const HeadlinesPage& page : pages) {
        lastPage_ = page.headlines.size();
        received_ += lastPage_;
        for (const Headline& it : page.headlines) {
            const QStringList key = {it.time.toString(Qt::ISODate), it.title, it.url};
            if (!seen.contains(key)) {
                seen.insert(key);
                headlines_ << it;
            }
        }
    }
}

HeadlineCount HeadlineCounts::all() const {
    return {total_, total_ >= EastmoneyHeadlines::mostCounted};
}

HeadlineCount HeadlineCounts::ofLast(int days) const {
    return {headlines(days).size(), !reaches(days)};
}

bool HeadlineCounts::reaches(int days) const {
    const bool isWhole = !all().isLowerBound &&
                         (headlines_.size() >= total_ || (received_ >= total_ && isLastPage()));
    return isWhole || (!headlines_.isEmpty() && headlines_.last().time < start(days));
}

QList<Headline> HeadlineCounts::headlines(int days) const {
    QList<Headline> found;
    std::ranges::copy_if(headlines_, std::back_inserter(found),
                         [&](const Headline& it) { return it.time >= start(days); });
    return found;
}

}  // namespace guanchao
