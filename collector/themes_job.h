// 主题新闻数量: news counts of the themes of the main store, into xinwenshul of the heat store.
#pragma once

#include "collector/news_job.h"

namespace guanchao {

class ThemesJob : public NewsJob {
public:
    using NewsJob::NewsJob;

    QString title() const override { return QStringLiteral("主题新闻数量"); }
    QList<Item> items() const override;
    void write(const Item& item, const Asked& asked) override;

protected:
    QString wordsOf(const Item& item) const override;
};

}  // namespace guanchao
