// The practice market on an evening, for tests of those who ask services of the past.
#pragma once

#include <gtest/gtest.h>

#include "platform/qt_http_client.h"
#include "tests/support/fakes.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class EveningMarket : public ::testing::Test {
protected:
    EveningMarket() {
        clock_.moment = now_;
        market_.start();
    }

    QList<Service> services(const QString& kind) const {
        return {Service{market_.host(), {}, 10, 1, 0, kind}};
    }

    const QDateTime now_{QDate(2026, 11, 24), QTime(16, 0)};
    PracticeMarket market_{PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s},
                                           {u"SH600016"_s, u"民生银行"_s},
                                           {u"SH600036"_s, u"招商银行"_s},
                                           {u"SZ000001"_s, u"平安银行"_s}}),
                           [now = now_] { return now; }};
    QtHttpClient client_;
    FakeClock clock_;
};

}  // namespace guanchao
