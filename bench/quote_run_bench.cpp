// A quote run over the whole market, against the practice market on loopback. Both sides open the
// store once a batch, since every batch is an operation of its own.
#include "market/quote_run.h"

#include "base/values.h"
#include "bench/bare_http.h"
#include "bench/bare_store.h"
#include "bench/compare.h"
#include "bench/market.h"
#include "formats/gbk.h"
#include "market/stored_quote.h"
#include "platform/qt_http_client.h"
#include "store/recordset.h"
#include "tests/support/fakes.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList requestPaths(const Stores& stores) {
    Connection connection = stores.main.open();
    Recordset codes(connection, u"select dm,jc from dmb "_s);
    QStringList paths;
    for (const CodeBatch& batch : codeBatches(codes)) {
        paths << u"/list="_s + batch.list;
    }
    return paths;
}

// The updates that a reply leads to.
QStringList updatesOf(const QByteArray& reply, const QString& now) {
    QStringList updates;
    for (const QuoteRow& row : quoteRows(textFromGbk(reply))) {
        if (hasQuote(row)) {
            updates << updateCodeTable(storedQuote(row), now);
        }
    }
    return updates;
}

std::vector<PracticeStock> allStocks(const Stores& stores) {
    std::vector<PracticeStock> stocks;
    Connection connection = stores.main.open();
    for (Recordset codes(connection, u"select dm,jc from dmb "_s); !codes.atEnd();
         codes.moveNext()) {
        stocks.push_back({codes.value(0).toText(), codes.value(1).toText()});
    }
    return stocks;
}

void writeBare(const Stores& stores, const QList<QStringList>& batches) {
    for (const QStringList& batch : batches) {
        BareStore store(stores.main.path);
        store.run(u"begin immediate"_s);
        for (const QString& update : batch) {
            store.run(update);
        }
        store.run(u"commit"_s);
    }
}

void quoteRun(benchmark::State& state, std::chrono::milliseconds away, int ahead, int bareAhead) {
    const Stores& stores = wholeMarket();
    FakeClock clock;
    PracticeMarket market(PracticeQuotes(allStocks(stores)), [&clock] { return clock.moment; });
    market.start();
    const QStringList paths = requestPaths(stores);
    QList<QStringList> updates;
    for (const QByteArray& reply : bareRequests(market.host(), paths, bareAhead)) {
        updates << updatesOf(reply, timeText(clock.moment));
    }
    market.setDelay(away);

    Globals globals;
    QtHttpClient http;
    QuoteFeed feed(stores, globals, clock,
                   QuoteSource(http, clock, {Service{market.host(), {}, 0, ahead}}));
    QuoteRun run(stores, clock, feed);
    compare(
        state,
        [&] {
            bareRequests(market.host(), paths, bareAhead);
            writeBare(stores, updates);
        },
        [&] { QCoro::waitFor(run.run([](const QuoteProgress&) {}, {})); });
}
// On this machine, beside one request after the other; and 50 ms away, beside as many ahead.
BENCHMARK_CAPTURE(quoteRun, near, std::chrono::milliseconds(0), 6, 1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(quoteRun, far, std::chrono::milliseconds(50), 6, 6)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

}  // namespace

}  // namespace guanchao
