// 公司新闻数量: news counts of the stocks that belong to a theme of enough attention, searched by
// the six digits of their codes, into gongsixinwen of the heat store.
#pragma once

#include "collector/news_job.h"

namespace guanchao {

class CompaniesJob : public NewsJob {
public:
    using NewsJob::NewsJob;

    QString title() const override { return QStringLiteral("公司新闻数量"); }
    QList<Item> items() const override;
    void write(const Item& item, const Asked& asked) override;

protected:
    QString wordsOf(const Item& item) const override;
};

}  // namespace guanchao
