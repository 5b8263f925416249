#include "store/prepared_stores.h"

#include <QTemporaryDir>

#include "formats/initials.h"
#include "formats/seed_list.h"
#include "tests/support/test_stores.h"
#include "tools/practice_folder/practice_folder.h"

namespace guanchao {

static const QString dataFolder = QStringLiteral(GUANCHAO_SOURCE_DIR "/data");

class PreparedStoresTest : public ::testing::Test {
protected:
    QStringList prepare() {
        return prepareStores(directory_.path(), dataFolder,
                             QDateTime(QDate(2026, 11, 24), QTime(8, 0, 0)));
    }

    static QStringList rows(const StoreFile& store, const QString& query) {
        return TestStores::rows(store, query);
    }

    QTemporaryDir directory_;
    Stores stores_ = storesIn(applicationFolder(directory_.path()));
};

TEST_F(PreparedStoresTest, ANewFolderHoldsAWholeMarketToPractiseOn) {
    EXPECT_EQ(prepare().size(), 5);
    const StoreFile& main = stores_.main;
    EXPECT_EQ(rows(main,
                   u"select count(*)>500 and count(distinct zhutiname)>=40 from dzhzhuti where"
                   u" dm in (select dm from dmb) and jc!='' and datetime(ztktime)>''"_s),
              QStringList{u"1"_s});
    EXPECT_EQ(rows(main, u"select id,xiugaizhutitime,hqtime,jiankongpinlu from tempcanshu"_s),
              QStringList{u"1|2026-11-24 08:00:00|null|20"_s});
    EXPECT_EQ(rows(stores_.heat, u"select mainisrun,isvisible,today,iszidinyinum from canshu"_s),
              QStringList{u"0|0|2026-11-24 08:00:00|0"_s});
}

TEST_F(PreparedStoresTest, AStoreThatIsThereStays) {
    prepare();
    stores_.main.open().execute(u"delete from dmb"_s);
    QFile::remove(stores_.heat.path);
    // What a killed process left of the store that is gone.
    const QString journal = stores_.heat.path + u"-journal"_s;
    writeFile(journal, "journal");
    EXPECT_EQ(prepare(), QStringList{u"caijiqi.mzdat"_s});
    EXPECT_FALSE(QFile::exists(journal)) << "it would be played back into the new one";
    EXPECT_EQ(rows(stores_.main, u"select count(*) from dmb"_s), QStringList{u"0"_s});
}

TEST(PracticeFolder, AloneIsLedToThePracticeMarket) {
    const TestStores store;
    const StoreFile& heat = store.stores.heat;
    const auto lead = [&](const QString& url) {
        heat.open().execute(u"update canshu set yinqingurl='"_s + url + u"'"_s);
        leadPagesTo(store.folder(), u"http://127.0.0.1:9"_s);
        return TestStores::rows(heat, u"select yinqingurl from canshu"_s)[0];
    };
    const QString practice = u"http://127.0.0.1:9/s?wd=tihuandm"_s;
    const QString mine = u"http://mine.example/?q=tihuandm"_s;
    EXPECT_EQ(lead(u"https://www.baidu.com/s?wd=tihuandm"_s), practice);
    EXPECT_EQ(lead(u"http://127.0.0.1:8/s?wd=tihuandm"_s), practice);
    EXPECT_EQ(lead(mine), mine);
}

TEST(Initials, ReadNamesAsTheExchangesDo) {
    const Initials initials(readInitialsExceptions(dataFolder + u"/initials.csv"_s));
    const std::pair<QString, QString> cases[] = {
        {u"贵州茅台"_s, u"gzmt"_s}, {u"万科A"_s, u"wka"_s},     {u"*ST中安"_s, u"*stza"_s},
        {u"招商银行"_s, u"zsyh"_s}, {u"长江电力"_s, u"cjdl"_s}, {u"重庆啤酒"_s, u"cqpj"_s},
        {u"厦门钨业"_s, u"xmwy"_s}, {u"万 科Ａ"_s, u"wka"_s},   {u"360"_s, u"360"_s},
    };
    for (const auto& [name, letters] : cases) {
        EXPECT_EQ(initials.of(name), letters) << name.toStdString();
    }
}

}  // namespace guanchao
