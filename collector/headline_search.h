// Counts news by the headlines of a service that lists them, which asks for no person: page after
// page, the newest first, until one is older than the longest period or enough pages are read.
#pragma once

#include "collector/headline_counts.h"
#include "collector/news_search.h"

namespace guanchao {

class HeadlineSearch : public NewsSearch {
public:
    HeadlineSearch(const RunOrder& order, const CollectorSettings& settings, Service service,
                   const Clock& clock);

    const Service& service() const override { return service_; }
    QString laiyuan() const override { return service_.kind; }
    std::optional<QString> nextPath(const QString& words,
                                    const QList<QByteArray>& pages) const override;
    std::optional<Fault> faultOf(const QString& words, qsizetype before,
                                 const QByteArray& page) const override;
    FoundNews find(const QString& words, const QList<QByteArray>& pages) const override;
    QString firstPath(const QString& words) const override;
    QString textOf(const QString& words, const QByteArray& page) const override;

private:
    struct ReadPage {
        QString words;
        int number;
        QByteArray page;
        HeadlinesPage headlines;
    };

    HeadlinesPage pageOf(const QString& words, const QByteArray& page, int number) const;
    HeadlineCounts countsOf(const QString& words, const QList<QByteArray>& pages) const;
    int longestPeriod() const { return std::max(customDays_, 1); }

    const Clock& clock_;
    int customDays_;
    int mostPages_;
    QRegularExpression person_;
    Service service_;
    mutable QList<ReadPage> read_;  // the pages of one item: each is asked about several times
};

}  // namespace guanchao
