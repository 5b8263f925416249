// 商品价格: rising and falling words in the first page of results for a commodity's name and
// "价格", into shophq and the list of commodities of the heat store.
#pragma once

#include "collector/collector_settings.h"
#include "collector/counts_writer.h"
#include "collector/job.h"
#include "collector/search_address.h"
#include "heat/collector_contract.h"

namespace guanchao {

class CommoditiesJob : public Job {
public:
    CommoditiesJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
                   const Service& search);

    QString title() const override { return QStringLiteral("商品价格"); }
    QList<Item> items() const override;
    std::unique_ptr<PageSource> source(HttpClient& http) const override {
        return std::make_unique<WebPages>(http, QList<Service>{address_.service()});
    }
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override;
    QString faultOf(const Item& item, const Asked& before, const QByteArray& page) const override;
    void write(const Item& item, const Asked& asked) override;

private:
    const Stores& stores_;
    double shopguanzhudu_;
    const CollectorSettings& settings_;
    SearchAddress address_;
    CountsWriter writer_;
};

}  // namespace guanchao
