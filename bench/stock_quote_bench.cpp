// The panel of the stock quote window from a reply, against touching the fields of the reply once;
// and one quote with its request, against the bare request.
#include "market/stock_quote.h"

#include "base/values.h"
#include "bench/bare_http.h"
#include "bench/compare.h"
#include "formats/gbk.h"
#include "platform/qt_http_client.h"
#include "tests/support/fakes.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int panelsAtOnce = 1000;
const QString path = u"/list=sh600000"_s;
const Fundamentals fundamentals = {u"2026-09-30 00:00:00"_s, u"2.5"_s, u"0.75"_s, u"5.25"_s};

PracticeQuotes quotes() {
    return PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}});
}

void stockPanels(benchmark::State& state) {
    const QByteArray body = gbkFromText(quotes().line(u"sh600000"_s, FakeClock().moment));
    compare(
        state,
        [&] {
            for (int turn = 0; turn < panelsAtOnce; ++turn) {
                for (const QString& field : textFromGbk(body).split(u',')) {
                    benchmark::DoNotOptimize(numericPrefix(field));
                }
            }
        },
        [&] {
            for (int turn = 0; turn < panelsAtOnce; ++turn) {
                benchmark::DoNotOptimize(
                    stockPanel(quoteRow(textFromGbk(body)), fundamentals, 1e6, true));
            }
        });
}
BENCHMARK(stockPanels)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

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
