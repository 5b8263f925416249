#include "heat/collector_launch.h"

#include <gtest/gtest.h>

#include "heat/collector_contract.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/statement_log.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class CollectorLaunchTest : public ::testing::Test {
protected:
    CollectorLaunchTest() {
        globals_.yingyongmulu = u"/opt/app/"_s;
        globals_.jintian = QDate(2026, 11, 24);
    }
    void run(const QString& statement) { store_.stores.heat.open().execute(statement); }
    QStringList settings() {
        return TestStores::rows(store_.stores.heat,
                                u"select mainisrun,isvisible,today from canshu"_s);
    }

    TestStores store_;
    Globals globals_;
    FakeDialogs dialogs_;
    FakeProcesses processes_;
    CollectorLaunch collectorLaunch_{store_.stores, globals_, dialogs_, processes_};
};

TEST_F(CollectorLaunchTest, TheSettingsAreWrittenBeforeTheLookAndTheStart) {
    const StatementLog log;
    StatementLog::onStatement() = [this](const QString&) {
        EXPECT_TRUE(processes_.asked.isEmpty() && processes_.started.isEmpty());
    };
    collectorLaunch_.launch(collectThemes);
    EXPECT_EQ(StatementLog::statements().filter(u"canshu"_s),
              QStringList({u"caijiqi.mzdat: select  iszidinyinum,zidinyinum,datetime(today) as"
                           u" today  FROM canshu"_s,
                           u"caijiqi.mzdat: update canshu set mainisrun=1,isvisible=1,"
                           u"today='2026-11-24 00:00:00'"_s}));
    EXPECT_EQ(processes_.asked, QStringList({u"caijiqi.exe"_s, u"caijiqi2.exe"_s}));
    EXPECT_EQ(processes_.started, QStringList{u"/opt/app//caijiqi|zhuti"_s});
}

TEST_F(CollectorLaunchTest, WhatStandsInTheWayOfALaunch) {
    for (const QString& name : {u"caijiqi.exe"_s, u"caijiqi2.exe"_s}) {
        processes_.running = {name};
        run(u"update canshu set mainisrun=0,today=''"_s);
        collectorLaunch_.launch(collectCommodities);
        EXPECT_EQ(settings(), QStringList{u"1|1|2026-11-24 00:00:00"_s}) << "ordered all the same";
        EXPECT_TRUE(dialogs_.shown.takeLast().contains(u"已在运行"_s));
        EXPECT_EQ(processes_.started, QStringList());
    }
    processes_.running.clear();
    processes_.canStart = false;
    collectorLaunch_.launch(collectCompanies);
    EXPECT_TRUE(dialogs_.shown.takeLast().contains(u"/opt/app//caijiqi"_s));
    run(u"delete from canshu"_s);
    collectorLaunch_.launch(collectCompanies);
    EXPECT_EQ(processes_.started.size(), 2) << "no settings are no hindrance";
    {
        Connection heat = store_.stores.heat.open();
        const Transaction import(heat);
        EXPECT_THROW(collectorLaunch_.launch(collectCompanies), OperationError);
    }
    run(u"drop table canshu"_s);
    EXPECT_THROW(collectorLaunch_.launch(collectCompanies), StoreError);
    EXPECT_EQ(processes_.started.size(), 2);
}

}  // namespace guanchao
