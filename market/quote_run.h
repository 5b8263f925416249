// The update of all stocks: every code of the code table, in batches, into the code table.
#pragma once

#include <QString>
#include <functional>

#include "market/quote_feed.h"
#include "platform/clock.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

// How far a run is, in stocks.
struct QuoteProgress {
    int updated = 0;
    int total = 0;
};

// A run lets events happen between batches. It belongs to a window; once that has called cancel()
// the run ends after the batch at hand: what the batches before have written stays.
class QuoteRun {
public:
    using Report = std::function<void(const QuoteProgress&)>;

    QuoteRun(const Stores& stores, const Clock& clock, QuoteFeed& feed, EventPump& pump);

    // The whole code table, indexes included. `report` is called at the beginning and after each
    // full batch; false if the run was cancelled or one is under way already. Raises what the feed
    // raises.
    bool run(const Report& report);

    // 更新全部: the same without the three indexes. No control runs it at present.
    bool gengxinquanbu(const Report& report);

    void cancel() { cancelled_ = true; }
    bool running() const { return running_; }

private:
    bool update(const QString& codesQuery, const Report& report);
    bool updateBatches(Recordset& codes, const Report& report);

    const Stores& stores_;
    const Clock& clock_;
    QuoteFeed& feed_;
    EventPump& pump_;
    bool running_ = false;
    bool cancelled_ = false;
};

}  // namespace guanchao
