// What the counts of themes and of stocks share: the searches for an item's words and the row that
// their counts become.
#pragma once

#include "collector/job.h"
#include "collector/news_search.h"

namespace guanchao {

class NewsJob : public Job {
public:
    NewsJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
            const Service& search)
        : stores_(stores),
          guanzhudu_(order.guanzhudu),
          news_(order, settings, search),
          writer_(stores.heat, order.day) {}

    std::unique_ptr<PageSource> source(HttpClient& http) const override {
        return std::make_unique<WebPages>(http, news_.service());
    }
    bool answers(const Item&, const QByteArray& page) const override { return news_.answers(page); }

protected:
    const Stores& stores_;
    double guanzhudu_;
    NewsSearch news_;
    CountsWriter writer_;
};

}  // namespace guanchao
