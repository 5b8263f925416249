// How many news of a word there are: of all times as the service counts them, of the last days by
// the times of the headlines, which come newest first and page by page. A count is a lower bound
// where the service counts no further, or where headlines of its days may be left on further pages.
#pragma once

#include <QDateTime>
#include <QList>

#include "services/headlines_eastmoney.h"

namespace guanchao {

struct HeadlineCount {
    qint64 number = 0;
    bool isLowerBound = false;

    bool operator==(const HeadlineCount&) const = default;
};

class HeadlineCounts {
public:
    // The first pages, one behind the other; a headline that comes twice, because a new one has
    // pushed it onto the next page, counts once.
    HeadlineCounts(const QList<HeadlinesPage>& pages, const QDateTime& now);

    HeadlineCount all() const;
    // Of the last days of 24 hours each.
    HeadlineCount ofLast(int days) const;

    // Whether a further page can't have any of these days.
    bool reaches(int days) const;
    // Whether there is no further page, though headlines may be missing.
    bool isLastPage() const { return lastPage_ < EastmoneyHeadlines::onAPage; }

    // Of the last days, the newest first.
    QList<Headline> headlines(int days) const;

private:
    QDateTime start(int days) const { return now_.addDays(-days); }

    QDateTime now_;
    QList<Headline> headlines_;
    qint64 total_ = 0;
    qsizetype received_ = 0;  // those that came twice too
    qsizetype lastPage_ = 0;
};

}  // namespace guanchao
