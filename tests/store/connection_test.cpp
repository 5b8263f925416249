#include "store/connection.h"

#include <QScopeGuard>
#include <semaphore>
#include <thread>

#include "base/values.h"
#include "store/failure.h"
#include "store/recordset.h"
#include "tests/support/store_test.h"

namespace guanchao {

class ConnectionTest : public StoreTest {
protected:
    static StoreFault openingFault(const QString& path, const QString& key) {
        return raisedBy<StoreError>([&] { Connection(path, key); }).fault();
    }
};

TEST_F(ConnectionTest, OnlyTheRightKeyOpensAStore) {
    const Stores& stores = store_.stores;
    EXPECT_NO_THROW(stores.main.open());
    EXPECT_NO_THROW(stores.heat.open());
    for (const auto& fault :
         {openingFault(stores.main.path, stores.heat.key), openingFault(stores.heat.path, {}),
          openingFault(stores.heat.path, stores.article.key)}) {
        EXPECT_EQ(fault, StoreFault::notADatabase);
    }
    EXPECT_EQ(openingFault(store_.folder() + u"none.mzdat"_s, {}), StoreFault::unreadable);
    EXPECT_FALSE(QFile::exists(store_.folder() + u"none.mzdat"_s));
}

// What another thread holds is waited for, and who holds it is told.
TEST_F(ConnectionTest, WhatAnotherThreadHoldsIsBusy) {
    const Stores& stores = store_.stores;
    std::binary_semaphore held(0);
    std::binary_semaphore tried(0);
    std::jthread other([&] {
        const Activity activity(u"导入文章"_s);
        Connection store = stores.article.open();
        const Transaction transaction(store);
        held.release();
        tried.acquire();
    });
    held.acquire();
    const auto end = qScopeGuard([&] { tried.release(); });
    const Connection::BusyTimeout shortest(std::chrono::milliseconds(1));
    const auto failure =
        raisedBy<StoreError>([&] { stores.article.open().execute(u"delete from wenzhang"_s); });
    EXPECT_EQ(failure.fault(), StoreFault::busy);
    EXPECT_TRUE(failureReason(failure).contains(u"正由“导入文章”使用"_s));
}

// The lock can't go while an operation waits for it: a wait would outlast the test.
TEST_F(ConnectionTest, WhatATransactionHoldsRefusesOtherWritersOfItsThreadAtOnce) {
    Connection::setBusyTimeout(std::chrono::hours(1));
    const auto restore = qScopeGuard([] { Connection::setBusyTimeout(std::chrono::seconds(5)); });
    const Stores& stores = store_.stores;
    const QString link = store_.folder() + u"link.mzdat"_s;
    ASSERT_TRUE(QFile::link(stores.article.path, link));
    const auto write = [&](const QString& path) {
        const Activity activity(u"删除文章"_s);
        Connection(path, stores.article.key).execute(u"delete from wenzhang"_s);
    };
    {
        const Activity activity(u"导入文章"_s);
        Connection store = stores.article.open();
        Transaction transaction(store);
        for (const QString& path : {stores.article.path, link}) {
            const auto refusal = raisedBy<OperationError>([&] { write(path); });
            EXPECT_EQ(refusal.reason(), u"正在导入文章，请等它结束后再试。"_s);
            EXPECT_EQ(refusal.activity(), u"删除文章"_s);
        }
        EXPECT_EQ(TestStores::rows(stores.article, u"select count(*) from wenzhang"_s),
                  QStringList{u"0"_s})
            << "readers are let in";
        transaction.commit();
        EXPECT_NO_THROW(write(link)) << "committed";
        Transaction another(store);
        EXPECT_THROW(write(link), OperationError);
        Connection::setBusyTimeout(std::chrono::milliseconds(1));
        Connection reader = stores.article.open();
        reader.execute(u"begin"_s);
        reader.execute(u"select count(*) from wenzhang"_s);
        EXPECT_THROW(another.commit(), StoreError) << "a reader's lock is waited for";
    }
    EXPECT_NO_THROW(write(link)) << "rolled back";
}

TEST_F(ConnectionTest, AStatementMustBeOneAndAFailureTellsWhichItWas) {
    Connection connection = store_.stores.main.open();
    EXPECT_THROW(connection.execute(u"delete from zixuangu;drop table dmb"_s), StoreError);
    EXPECT_NO_THROW(connection.execute(u"delete from zixuangu; "_s));
    const Activity activity(u"读取"_s);
    const QString statement = u"select nothing from dmb"_s;
    const auto failure = raisedBy<StoreError>([&] { Recordset(connection, statement); });
    EXPECT_TRUE(failure.reason().contains(u"nothing"_s)) << "the column by its name";
    EXPECT_EQ(failure.statement(), statement);
    EXPECT_EQ(failure.activity(), u"读取"_s);
}

TEST_F(ConnectionTest, WhereOnlyReadingIsAllowedNothingElseIs) {
    store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 1);
    Connection connection = store_.stores.main.open();
    connection.onlyRead();
    const QString other = store_.folder() + u"other.db"_s;
    for (const QString& statement :
         {u"delete from dmb"_s, u"update dmb set jc=''"_s, u"drop table dmb"_s,
          u"create temp table a(b)"_s, QString(u"attach "_s + quoted(other) + u" as other"_s),
          u"pragma query_only=off"_s, u"pragma table_info(dmb)"_s, u"begin immediate"_s,
          u"select sqlcipher_export('main')"_s, u"select load_extension('x')"_s}) {
        const auto refusal = raisedBy<StoreError>([&] { connection.execute(statement); });
        EXPECT_EQ(refusal.reason(), u"这里只能查询"_s) << statement.toStdString();
    }
    EXPECT_FALSE(QFile::exists(other));
    const Recordset read(connection,
                         u"with recursive n(i) as (select 1 union all select i+1 from n where i<3)"
                         u" select count(*),max(round(i,1)),upper(jc) from n,dmb"_s);
    EXPECT_EQ(read.value(2).toText(), u"浦发银行"_s);
}

}  // namespace guanchao
