// Real stores, a scripted user and a clock for the tests of what themes and their stocks go
// through.
#pragma once

#include <gtest/gtest.h>

#include "base/globals.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/grid_texts.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class ThemeFixture : public ::testing::Test {
protected:
    QString stamp() {
        return store_.rows(QStringLiteral("select xiugaizhutitime from tempcanshu")).value(0);
    }
    QStringList members(const QString& columns = QStringLiteral("zhutiname,dm")) {
        return store_.rows(QStringLiteral("select %1 from dzhzhuti order by rowid").arg(columns));
    }
    // What the user has been shown since the last call.
    QStringList told() { return std::exchange(dialogs_.shown, {}); }

    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
};

}  // namespace guanchao
