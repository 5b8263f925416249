// 商品价格: rising and falling words in the first page of results for a commodity's name and
// "价格", into shophq and the list of commodities of the heat store.
#pragma once

#include "collector/news_job.h"

namespace guanchao {

class CommoditiesJob : public NewsJob {
public:
    // Raises OperationError where there is no service to ask.
    CommoditiesJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
                   const QList<Service>& search, const Clock& clock);

    QString title() const override { return QStringLiteral("商品价格"); }
    QList<Item> items() const override;
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override;
    void write(const Item& item, const Asked& asked) override;

protected:
    QString wordsOf(const Item& item) const override;

private:
    double shopguanzhudu_;
    ScoreWeights weights_;
};

}  // namespace guanchao
