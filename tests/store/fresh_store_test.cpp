#include "store/fresh_store.h"

#include "base/activity.h"
#include "store/connection.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class FreshStoreTest : public ::testing::Test {
protected:
    void makeWith(const QString& path, const QString& word) {
        createStore(path, {}, u"create table a(b); insert into a values('%1')"_s.arg(word));
    }
    QStringList words() { return TestStores::rows({target_, {}}, u"select b from a"_s); }
    QStringList left() {
        return QDir(store_.folder()).entryList({u"mubiao*"_s}, QDir::AllEntries, QDir::Name);
    }

    TestStores store_;
    const QString target_ = store_.folder() + u"mubiao"_s;
};

// What a killed run has left must neither stand in the way nor be played back into the next store.
TEST_F(FreshStoreTest, LeftoversOfAKilledRunGo) {
    makeWith(target_, QString(20000, u'旧'));
    QByteArray journal;
    {
        Connection open(target_, {});
        Transaction transaction(open);
        open.execute(u"pragma cache_size=1"_s);
        open.execute(u"update a set b='%1'"_s.arg(QString(20000, u'半')));
        journal = contentOf(target_ + u"-journal"_s);
        ASSERT_FALSE(journal.isEmpty());
    }
    for (const QString& suffix : {u"-journal"_s, u".new"_s, u".new-journal"_s}) {
        writeFile(target_ + suffix, journal);
    }
    replaceStore(target_, [this](const QString& path) { makeWith(path, u"新"_s); });
    EXPECT_EQ(words(), QStringList{u"新"_s});
    EXPECT_EQ(left(), QStringList{u"mubiao"_s});
}

TEST_F(FreshStoreTest, AFailureLeavesTheOlderStore) {
    makeWith(target_, u"旧"_s);
    EXPECT_THROW(replaceStore(target_,
                              [this](const QString& path) {
                                  makeWith(path, u"新"_s);
                                  throw OperationError(u"half way"_s);
                              }),
                 OperationError);
    EXPECT_THROW(makeStore(target_, [this](const QString& path) { makeWith(path, u"新"_s); }),
                 OperationError)
        << "only where none is";
    EXPECT_EQ(words(), QStringList{u"旧"_s});
    EXPECT_EQ(left(), QStringList{u"mubiao"_s});
}

// Without its journal an older file that an interruption left half written would be lost for good.
TEST_F(FreshStoreTest, AStoreThatCannotTakeItsPlaceLeavesTheJournal) {
    ASSERT_TRUE(QDir().mkpath(target_ + u"/zhanyong"_s));
    writeFile(target_ + u"-journal"_s, "journal");
    EXPECT_THROW(replaceStore(target_, [this](const QString& path) { makeWith(path, u"新"_s); }),
                 OperationError);
    EXPECT_EQ(contentOf(target_ + u"-journal"_s), "journal");
    EXPECT_EQ(left(), QStringList({u"mubiao"_s, u"mubiao-journal"_s}));
}

}  // namespace guanchao
