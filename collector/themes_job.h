// 主题新闻数量: news counts of the themes of the main store, into xinwenshul of the heat store.
#pragma once

#include "collector/job.h"
#include "collector/news_search.h"

namespace guanchao {

class ThemesJob : public Job {
public:
    ThemesJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
              const Service& search);

    QString title() const override { return QStringLiteral("主题新闻数量"); }
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
