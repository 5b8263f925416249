// What the jobs that search news share: the searches for an item's words, in the order of
// services.ini, and the row that their counts become.
#pragma once

#include "collector/job.h"
#include "collector/news_search.h"

namespace guanchao {

class NewsJob : public Job {
public:
    // Raises OperationError where there is no service to ask.
    NewsJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
            const QList<Service>& search, const Clock& clock);

    std::unique_ptr<PageSource> source(HttpClient& http) const override;
    int ways() const override { return static_cast<int>(searches_.size()); }
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override;
    QString faultOf(const Item& item, const Asked& before, const QByteArray& page) const override;

protected:
    virtual QString wordsOf(const Item& item) const = 0;
    FoundNews found(const Item& item, const Asked& asked) const;
    const NewsSearch& search(const Asked& asked) const {
        return *searches_[static_cast<size_t>(asked.way)];
    }

    const Stores& stores_;
    double guanzhudu_;
    CountsWriter writer_;

private:
    std::vector<std::unique_ptr<NewsSearch>> searches_;
};

}  // namespace guanchao
