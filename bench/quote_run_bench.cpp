// A quote run over the whole market, against the practice market on loopback. Both sides open the
// store once a batch, since every batch is an operation of its own.
#include "market/quote_run.h"

#include <curl/curl.h>

#include "base/values.h"
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

size_t appendBody(char* data, size_t size, size_t count, void* body) {
    const size_t bytes = size * count;
    static_cast<QByteArray*>(body)->append(data, static_cast<qsizetype>(bytes));
    return bytes;
}

// The requests in a loop over one handle; gives the replies back.
QList<QByteArray> bareRequests(const QString& host, const QStringList& paths) {
    QList<QByteArray> replies;
    CURL* curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, appendBody);
    for (const QString& path : paths) {
        replies << QByteArray();
        curl_easy_setopt(curl, CURLOPT_URL, (host + path).toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_WRITEDATA, &replies.last());
        curl_easy_perform(curl);
    }
    curl_easy_cleanup(curl);
    return replies;
}

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

void quoteRun(benchmark::State& state) {
    const Stores& stores = wholeMarket();
    std::vector<PracticeStock> stocks;
    Connection connection = stores.main.open();
    for (Recordset codes(connection, u"select dm,jc from dmb "_s); !codes.atEnd();
         codes.moveNext()) {
        stocks.push_back({codes.value(0).toText(), codes.value(1).toText()});
    }
    FakeClock clock;
    PracticeMarket market(PracticeQuotes(stocks), [&clock] { return clock.moment; });
    market.start();
    const QStringList paths = requestPaths(stores);
    QList<QStringList> updates;
    for (const QByteArray& reply : bareRequests(market.host(), paths)) {
        updates << updatesOf(reply, timeText(clock.moment));
    }

    Globals globals;
    QtHttpClient http;
    QuoteFeed feed(stores, globals, clock, http, {market.host(), {}, 0, 6});
    QuoteRun run(stores, clock, feed);
    compare(
        state,
        [&] {
            bareRequests(market.host(), paths);
            for (const QStringList& batch : updates) {
                BareStore store(stores.main.path);
                store.run(u"begin immediate"_s);
                for (const QString& update : batch) {
                    store.run(update);
                }
                store.run(u"commit"_s);
            }
        },
        [&] { QCoro::waitFor(run.run([](const QuoteProgress&) {}, {})); });
}
BENCHMARK(quoteRun)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

}  // namespace guanchao
