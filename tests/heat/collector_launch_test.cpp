#include "heat/collector_launch.h"

#include "heat/collector_contract.h"
#include "tests/support/store_test.h"

namespace guanchao {

class CollectorLaunchTest : public StoreTest {
protected:
    CollectorLaunchTest() {
        globals_.yingyongmulu = u"/opt/app/"_s;
        globals_.jintian = QDate(2026, 11, 24);
        processes_.read = [this] { return settings(); };
    }
    QStringList settings() { return heatRows(u"select mainisrun,isvisible,today from canshu"_s); }

    // Notes what the collector would read at its start.
    struct : FakeProcesses {
        bool start(const QString& program, const QString& argument) override {
            readAtStart = read();
            return FakeProcesses::start(program, argument);
        }
        std::function<QStringList()> read;
        QStringList readAtStart;
    } processes_;
    CollectorLaunch collectorLaunch_{store_.stores, globals_, dialogs_, processes_};
};

TEST_F(CollectorLaunchTest, TheSettingsAreWrittenBeforeTheStartWhateverStandsInItsWay) {
    collectorLaunch_.launch(collectThemes);
    EXPECT_EQ(processes_.readAtStart, QStringList{u"1|1|2026-11-24 00:00:00"_s});
    EXPECT_EQ(processes_.started, QStringList{u"/opt/app//caijiqi|zhuti"_s});
    processes_.started.clear();
    for (const QString& name : {u"caijiqi.exe"_s, u"caijiqi2.exe"_s}) {
        processes_.running = {name};
        runHeat(u"update canshu set mainisrun=0,today=''"_s);
        collectorLaunch_.launch(collectCommodities);
        EXPECT_EQ(settings(), QStringList{u"1|1|2026-11-24 00:00:00"_s}) << "ordered all the same";
        EXPECT_TRUE(dialogs_.shown.takeLast().contains(u"已在运行"_s));
        EXPECT_EQ(processes_.started, QStringList());
    }
    processes_.running.clear();
    processes_.canStart = false;
    collectorLaunch_.launch(collectCompanies);
    EXPECT_TRUE(dialogs_.shown.takeLast().contains(u"/opt/app//caijiqi"_s));
    runHeat(u"delete from canshu"_s);
    collectorLaunch_.launch(collectCompanies);
    EXPECT_EQ(processes_.started.size(), 2) << "no settings are no hindrance";
    {
        Connection heat = store_.stores.heat.open();
        const Transaction import(heat);
        EXPECT_THROW(collectorLaunch_.launch(collectCompanies), OperationError);
    }
    runHeat(u"drop table canshu"_s);
    EXPECT_THROW(collectorLaunch_.launch(collectCompanies), StoreError);
    EXPECT_EQ(processes_.started.size(), 2);
}

}  // namespace guanchao
