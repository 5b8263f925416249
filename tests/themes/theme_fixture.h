// Real stores with two codes, and a scripted user for what themes and their stocks go through.
#pragma once

#include "tests/support/store_test.h"

namespace guanchao {

class ThemeFixture : public StoreTest {
protected:
    ThemeFixture() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 2);
    }

    QString stamp() {
        return store_.rows(QStringLiteral("select xiugaizhutitime from tempcanshu")).value(0);
    }
    QStringList members(const QString& columns = QStringLiteral("zhutiname,dm")) {
        return store_.rows(QStringLiteral("select %1 from dzhzhuti order by rowid").arg(columns));
    }
};

}  // namespace guanchao
