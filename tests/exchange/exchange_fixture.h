// Real stores with a scripted user for the tests of exports and imports. The export folder of the
// user lies in the temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "base/globals.h"
#include "exchange/exchange_run.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class ExchangeFixture : public ::testing::Test {
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

    // What the user has been shown since the last call.
    QStringList told() { return std::exchange(dialogs_.shown, {}); }

    const QByteArray home_ = qgetenv("HOME");
    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    FakePump pump_;
    QList<ExchangeProgress> seen_;
    ExchangeRun run_{pump_, [this](const ExchangeProgress& it) { seen_ << it; }};
};

}  // namespace guanchao
