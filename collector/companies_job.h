// 公司新闻数量: news counts of the stocks that belong to a theme of enough attention, searched by
// the six digits of their codes, into gongsixinwen of the heat store.
#pragma once

#include "collector/job.h"
#include "collector/news_search.h"

namespace guanchao {

class CompaniesJob : public Job {
public:
    CompaniesJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
                 const Service& search);

    QString title() const override { return QStringLiteral("公司新闻数量"); }
    QList<Item> items() const override;
    const Service& service() const override { return news_.service(); }
    QStringList paths(const Item& item) const override;
    bool answers(const Item&, const QByteArray& page) const override { return news_.answers(page); }
    void write(const Item& item, const QList<QByteArray>& pages) override;

private:
    const Stores& stores_;
    double guanzhudu_;
    NewsSearch news_;
    CountsWriter writer_;
};

}  // namespace guanchao
