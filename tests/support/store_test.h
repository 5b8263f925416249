// Real stores, a scripted user, a clock that is set, a service that is scripted, and a grid: what
// the rules under test are given.
#pragma once

#include <utility>

#include "base/globals.h"
#include "grid/result_grid.h"
#include "store/edits.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/grid_texts.h"
#include "tests/support/outcome_of.h"
#include "tests/support/qt_printers.h"
#include "tests/support/quote_reply.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class StoreTest : public ::testing::Test {
protected:
    // What the user has been shown since the last call.
    QStringList told() { return std::exchange(dialogs_.shown, {}); }

    void runHeat(const QString& statement) { store_.stores.heat.open().execute(statement); }
    QStringList heatRows(const QString& query) {
        return TestStores::rows(store_.stores.heat, query);
    }
    // The quote service has these prices, by lower-case code.
    void answerQuotes(const QHash<QString, double>& prices) {
        http_.answer = [prices](const QString& path) { return quoteReply(path, prices); };
    }
    void runArticle(const QString& statement) { store_.stores.article.open().execute(statement); }
    QStringList articleRows(const QString& query) {
        return TestStores::rows(store_.stores.article, query);
    }

    TestStores store_;
    Removals removals_{store_.folder() + QStringLiteral("撤消/")};
    Edits edits_{removals_};
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    FakeFailures failures_;
    FakeHttp http_;
    ResultGrid grid_;
};

}  // namespace guanchao
