// Counts news on the pages of a search engine: one page a period, each of which tells its number of
// results.
#pragma once

#include "collector/news_search.h"
#include "collector/search_address.h"

namespace guanchao {

class PageSearch : public NewsSearch {
public:
    // Raises OperationError for a search page pattern that is none.
    PageSearch(const RunOrder& order, const CollectorSettings& settings, const Service& service);

    const Service& service() const override { return address_.service(); }
    QString laiyuan() const override { return {}; }
    std::optional<QString> nextPath(const QString& words,
                                    const QList<QByteArray>& pages) const override;
    std::optional<Fault> faultOf(const QString& words, qsizetype before,
                                 const QByteArray& page) const override;
    FoundNews find(const QString& words, const QList<QByteArray>& pages) const override;
    QString firstPath(const QString& words) const override;
    QString textOf(const QString& words, const QByteArray& page) const override;

private:
    const CollectorSettings& settings_;
    int customDays_;
    SearchAddress address_;
};

}  // namespace guanchao
