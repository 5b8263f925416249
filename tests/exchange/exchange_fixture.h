// Real stores with a scripted user for the tests of exports and imports. The export folder of the
// user lies in the temporary folder.
#pragma once

#include <QTest>

#include "exchange/exchange_run.h"
#include "tests/support/store_test.h"

namespace guanchao {

class ExchangeFixture : public StoreTest {
protected:
    ExchangeFixture() { qputenv("HOME", store_.folder().chopped(1).toUtf8()); }
    ~ExchangeFixture() override { qputenv("HOME", home_); }

    QString exportFolder() const { return store_.folder() + QStringLiteral("导出主题/"); }
    StoreFile library() const {
        return {exportFolder() + QStringLiteral("zhutibackup.ztb"), store_.stores.backupKey};
    }

    static void execute(const StoreFile& store, const QStringList& statements) {
        Connection connection = store.open();
        Transaction transaction(connection);
        for (const QString& statement : statements) {
            connection.execute(statement);
        }
        transaction.commit();
    }

    bool allEnded() {
        return QTest::qWaitFor([this] { return !runs_.running(); }) &&
               QThreadPool::globalInstance()->waitForDone();
    }

    const QByteArray home_ = qgetenv("HOME");
    QList<ShownExchange> seen_;
    ExchangeRun run_{[this](const ShownExchange& it) { seen_ << it; }};
    Runs runs_{failures_};
};

}  // namespace guanchao
