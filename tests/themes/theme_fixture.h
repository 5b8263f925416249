// Real stores and a scripted user for the tests of what themes and their stocks go through.
#pragma once

#include "tests/support/store_test.h"

namespace guanchao {

class ThemeFixture : public StoreTest {
protected:
    QString stamp() {
        return store_.rows(QStringLiteral("select xiugaizhutitime from tempcanshu")).value(0);
    }
    QStringList members(const QString& columns = QStringLiteral("zhutiname,dm")) {
        return store_.rows(QStringLiteral("select %1 from dzhzhuti order by rowid").arg(columns));
    }
};

}  // namespace guanchao
