// The update of all stocks: every code of the code table, in batches, into the code table.
#pragma once

#include <QString>
#include <functional>

#include "base/cancellable_run.h"
#include "base/first_failure.h"
#include "market/quote_feed.h"
#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

// How far a run is, in stocks.
struct QuoteProgress {
    int updated = 0;
    int total = 0;
    QString words;  // for the time label; empty before the first batch
};

// A run lets events happen between batches. Cancelled, it ends after the batch at hand: what the
// batches have written stays.
class QuoteRun {
public:
    using Report = std::function<void(const QuoteProgress&)>;

    QuoteRun(const Stores& stores, const Clock& clock, QuoteFeed& feed, EventPump& pump);

    // The whole code table, indexes included. `report` is called at the beginning and after each
    // full batch; false if the run was cancelled. Raises what the feed raises, RefusedLines at the
    // end only, and OperationError if a run is under way.
    bool run(const Report& report);

    // 更新全部: the same without the three indexes. No control runs it at present.
    bool gengxinquanbu(const Report& report);

    void cancel() { run_.cancel(); }
    bool running() const { return run_.running(); }

private:
    bool update(const QString& codesQuery, const Report& report);
    FirstFailure<RefusedLines> updateBatches(Recordset& codes, const Report& report);

    const Stores& stores_;
    const Clock& clock_;
    QuoteFeed& feed_;
    CancellableRun run_;
};

}  // namespace guanchao
