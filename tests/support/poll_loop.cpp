// Polls on the stores of a folder, without a pause, until it is killed. Each poll gives every code
// the same new price, to and fro across the former close, and writes one byte to the output when
// its quotes are asked for.
#include <cstdio>

#include "monitor/alarm_engine.h"
#include "tests/support/fake_alarm_screen.h"
#include "tests/support/fakes.h"
#include "tests/support/quote_reply.h"

using namespace guanchao;

static QHash<QString, double> pricesOf(int poll, const QString& path) {
    const double distance = 0.5 + 0.001 * (poll % 400);
    QHash<QString, double> prices;
    for (const QString& code : path.section(u'=', 1).split(u',', Qt::SkipEmptyParts)) {
        prices.insert(code, poll % 2 == 0 ? 10 + distance : 10 - distance);
    }
    return prices;
}

int main(int, char** argv) {
    const Stores stores = storesIn(applicationFolder(QString::fromLocal8Bit(argv[1])));
    Globals globals;
    globals.jiankongkaiqi = 1;
    FakeClock clock;
    FakeFailures failures;
    FakeHttp http;
    int polls = 0;
    http.answer = [&polls](const QString& path) {
        std::fputc('.', stdout);
        std::fflush(stdout);
        return quoteReply(path, pricesOf(++polls, path));
    };
    QuoteFeed feed(stores, globals, clock, QuoteSource(http, clock, {Service()}));
    FakeAlarmScreen screen;
    AlarmEngine engine(stores, globals, clock, feed, failures, screen);
    for (;;) {
        engine.tick();
    }
}
