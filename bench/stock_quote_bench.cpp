// One quote of the stock quote window with its request, against the bare request. What its panel
// costs is in it: some microseconds every few seconds.
#include "market/stock_quote.h"

#include "bench/bare_http.h"
#include "bench/compare.h"
#include "formats/gbk.h"
#include "platform/qt_http_client.h"
#include "tests/support/fakes.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString path = u"/list=sh600000"_s;
const Fundamentals fundamentals = {u"2026-09-30 00:00:00"_s, u"2.5"_s, u"0.75"_s, u"5.25"_s};

PracticeQuotes quotes() {
    return PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}});
}

void stockQuote(benchmark::State& state) {
    PracticeMarket market(quotes(), [] { return FakeClock().moment; });
    market.start();
    BareHttp bare;
    QtHttpClient http;
    const Service service = {market.host(), {}, 0};
    compare(
        state, [&] { benchmark::DoNotOptimize(bare.get(market.host() + path)); },
        [&] {
            const HttpReply reply = QCoro::waitFor(http.get(service, path, {}));
            benchmark::DoNotOptimize(
                stockPanel(quoteRow(textFromGbk(reply.body)), fundamentals, 1e6, true));
        });
}
BENCHMARK(stockQuote)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(200);

}  // namespace

}  // namespace guanchao
