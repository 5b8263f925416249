#include "collector/collection.h"

#include "tests/support/store_test.h"

namespace guanchao {

namespace {

// Two pages an item: "/甲1", "/甲2".
class FakeJob : public Job {
public:
    QString title() const override { return u"试"_s; }
    QList<Item> items() const override { return list; }
    QList<Service> services() const override {
        QList<Service> services;
        for (const QString& host : hosts) {
            services << Service{.host = host, .referer = {}};
        }
        return services;
    }
    QString laiyuan(int way) const override { return kinds.value(way); }
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override {
        const qsizetype page = asked.pages.size() + 1;
        return page <= pagesOfAnItem ? std::optional(u"/%1%2"_s.arg(item.key).arg(page))
                                     : std::nullopt;
    }
    std::optional<Fault> faultOf(const Item&, const Asked&, const QByteArray& page) const override {
        return page == "bad"      ? std::optional(Fault{FaultKind::unreadable, u"坏"_s})
               : page == "person" ? std::optional(Fault{FaultKind::limited, u"验证码"_s})
                                  : std::nullopt;
    }
    void write(const Item& item, const Asked& asked) override {
        ++tries;
        if (deleted == item.key) {
            throw OperationError(u"已删除"_s);
        }
        if (refusals-- > 0) {
            throw StoreError({}, QStringLiteral(GUANCHAO_SOURCE_DIR), {}, fault);
        }
        written << item.key + QString::fromUtf8(asked.pages.join()) +
                       (asked.way > 0 ? QString::number(asked.way) : QString());
    }

    QList<Item> list = {{u"甲"_s, u"甲"_s}, {u"乙"_s, u"乙"_s}};
    QStringList hosts = {u"a"_s};
    QStringList kinds;
    qsizetype pagesOfAnItem = 2;
    QString deleted;
    int refusals = 0;
    StoreFault fault = StoreFault::other;
    int tries = 0;
    QStringList written;
};

QList<Item> itemsNamed(int count, const std::optional<QString>& laiyuan = {}) {
    QList<Item> items;
    for (int at = 0; at < count; ++at) {
        const QString name = QString::number(at);
        items << Item{name, name, false, laiyuan};
    }
    return items;
}

}  // namespace

class CollectionTest : public StoreTest {
protected:
    CollectionTest() {
        http_.answer = [](const QString& path) { return path.last(1).toUtf8(); };
    }

    void run(Scope scope = Scope::rest) {
        waits_.clear();
        http_.paths.clear();
        http_.addresses.clear();
        collection_ =
            std::make_unique<Collection>(job_, store_.stores.heat, http_, clock_, pacing_, wait_);
        collection_->begin(scope);
        sleepers_.clear();
        runs_.start([this](std::stop_token stop) { return collection_->run(stop); });
        passTime();
    }
    // The waits in milliseconds.
    QList<int> runToTheEnd(Scope scope = Scope::rest) {
        run(scope);
        EXPECT_TRUE(collection_->hasEnded());
        EXPECT_FALSE(runs_.running());
        return waits_;
    }
    void pace(const QList<int>& retries, int giveUpAfter = 20, int pause = 100) {
        settings_.retries = retries;
        settings_.giveUpAfter = giveUpAfter;
        settings_.pause = pause;
        pacing_ = Pacing(settings_, [] { return 0.0; });
    }
    QCoro::Task<> wait(std::chrono::milliseconds time, std::stop_token stop) {
        waits_ << static_cast<int>(time.count());
        const auto over = std::make_shared<Later<bool>>();
        sleepers_ << Sleeper{clock_.up + time, over};
        co_await over->orStop(stop);
    }
    // Moves the clock from wait to wait, until nobody waits for it.
    void passTime() {
        for (qsizetype waits = 1; !sleepers_.isEmpty() && runs_.running(); ++waits) {
            ASSERT_LT(waits, 5000) << "no end";
            const auto next = std::ranges::min_element(sleepers_, {}, &Sleeper::until);
            const Sleeper sleeper = *next;
            sleepers_.erase(next);
            ASSERT_GE(sleeper.until, clock_.up) << "a wait backwards";
            clock_.moveOn(sleeper.until - clock_.up);
            if (onWait_) {
                onWait_(waits);
            }
            sleeper.over->deliver(true);
        }
    }

    QString summary() const { return collection_->summary(); }

    FakeJob job_;
    CollectorSettings settings_{
        .allPeriod = {}, .weights = {}, .pause = 100, .randomPause = 50, .retries = {1000, 3000}};
    Pacing pacing_{settings_, [] { return 0.5; }};
    struct Sleeper {
        std::chrono::milliseconds until;
        std::shared_ptr<Later<bool>> over;
    };
    QList<Sleeper> sleepers_;
    QList<int> waits_;
    std::function<void(qsizetype)> onWait_;
    Wait wait_ = [this](auto time, auto stop) { return wait(time, stop); };
    std::unique_ptr<Collection> collection_;
    Runs runs_{failures_};
};

TEST_F(CollectionTest, PageAfterPageWithAPauseBetweenAll) {
    EXPECT_EQ(runToTheEnd(), (QList<int>{125, 125, 125}));
    EXPECT_EQ(http_.paths, (QStringList{u"/甲1"_s, u"/甲2"_s, u"/乙1"_s, u"/乙2"_s}));
    EXPECT_EQ(job_.written, (QStringList{u"甲12"_s, u"乙12"_s}));
    EXPECT_EQ(summary(), u"采集完成：共 2 项，写入 2 项，跳过 0 项。"_s);

    onWait_ = [this](qsizetype waits) { job_.pagesOfAnItem = waits == 1 ? 1 : 2; };
    runToTheEnd();
    EXPECT_EQ(http_.paths.value(1), u"/甲2"_s) << "though the job would decide otherwise by then";
    EXPECT_TRUE(collection_->tally().failures.isEmpty());
}

TEST_F(CollectionTest, AFailedItemComesAgainBehindTheOthersAndIsNamedInTheEnd) {
    pace({1000, 3000});
    // A clock that is set back holds no try.
    onWait_ = [this](qsizetype) { clock_.moment = clock_.moment.addDays(-1); };
    http_.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path == u"/甲2"_s ? std::nullopt : std::optional(path.last(1).toUtf8());
    };
    // Behind the two items the first try again is waited for, looking each second whether the main
    // program lives; the second is waited for longer.
    EXPECT_EQ(runToTheEnd(), (QList<int>{100, 100, 100, 100, 700, 100, 100, 1000, 1000, 900, 100}));
    EXPECT_EQ(http_.paths.count(u"/甲1"_s), 3) << "an item is asked for as a whole again";
    EXPECT_EQ(job_.written, QStringList{u"乙12"_s});
    EXPECT_EQ(collection_->tally().failureWords(), u"失败 3 次：没有应答 3"_s);
    EXPECT_EQ(collection_->tally().skipped, QStringList{u"甲"_s});
    EXPECT_EQ(summary(), u"采集完成：共 2 项，写入 1 项，跳过 1 项。"_s);
}

TEST_F(CollectionTest, WhatFailsAtOneServiceIsAskedOfTheOthersFromTheStart) {
    pace({});
    job_.list = itemsNamed(3);
    job_.hosts = {u"a"_s, u"b"_s};
    http_.answer = [this](const QString& path) -> std::optional<QByteArray> {
        const bool isFirst = http_.addresses.last().startsWith(u'a');
        return path.startsWith(u"/0"_s) || (isFirst && path == u"/12"_s)
                   ? std::optional<QByteArray>("bad")
                   : path.last(1).toUtf8();
    };
    runToTheEnd();
    EXPECT_EQ(http_.addresses.filter(u"/01"_s), (QStringList{u"a/01"_s, u"b/01"_s}));
    EXPECT_EQ(collection_->tally().skipped, QStringList{u"0"_s});
    EXPECT_EQ(job_.written.size(), 2);
    EXPECT_EQ(collection_->items()[0].reason, u"坏"_s);
}

TEST_F(CollectionTest, HostsShareTheItemsButThoseOfAKindThatHasNotTooMany) {
    pace({}, 20, 900);
    job_.pagesOfAnItem = 1;
    job_.hosts = {u"a"_s, u"b"_s, u"a"_s};
    job_.kinds = {u"x"_s, u"y"_s, u"x"_s};
    const struct {
        int items;
        std::optional<QString> laiyuan;
        bool isShared;
    } cases[] = {{20, u"x"_s, false}, {20, u"gone"_s, true}, {20, {}, true}, {60, u"x"_s, true}};
    for (const auto& it : cases) {
        job_.list = itemsNamed(it.items, it.laiyuan);
        runToTheEnd();
        EXPECT_EQ(!http_.addresses.filter(u"b/"_s).isEmpty(), it.isShared) << it.items;
    }
    EXPECT_EQ(http_.addresses.filter(u"b/"_s).first(), u"b/591"_s) << "from the end";
    job_.list = itemsNamed(20);
    runToTheEnd();
    EXPECT_EQ(http_.addresses.filter(u"a/"_s).size(), 10) << "two services of one host are one";
}

TEST_F(CollectionTest, AHostThatLimitsRestsWhileTheOtherWorksAndIsGivenUpInTheEnd) {
    pace({1000, 2000});
    job_.list = itemsNamed(8);
    job_.pagesOfAnItem = 1;
    job_.hosts = {u"a"_s, u"b"_s};
    QString told;
    onWait_ = [&](qsizetype waits) { told += waits == 2 ? collection_->waitWords() : QString(); };
    http_.answer = [this](const QString& path) {
        const bool limits = http_.addresses.last().startsWith(u'a');
        return limits ? QByteArray("person") : path.last(1).toUtf8();
    };
    runToTheEnd();
    EXPECT_EQ(job_.written.size(), 8) << "none has failed by it";
    EXPECT_LE(http_.addresses.filter(u"a/"_s).size(), 3);
    EXPECT_TRUE(holds(told, u"验证码，1 秒后再试"_s));

    job_.hosts = {u"a"_s};
    job_.written.clear();
    runToTheEnd();
    EXPECT_EQ(http_.paths.size(), 3) << "it is asked no more after two rests";
    EXPECT_EQ(collection_->state(), RunState::hopeless);
    EXPECT_TRUE(holds(summary(), u"（验证码）"_s));
    EXPECT_EQ(collection_->tally().failureWords(), u"失败 3 次：被限制 3"_s);
}

TEST_F(CollectionTest, ARefusedRowIsTriedAgainWithoutItsPages) {
    pace({1000});
    job_.refusals = 1;
    runToTheEnd();
    EXPECT_EQ(http_.paths.size(), 4);
    EXPECT_EQ(job_.written, (QStringList{u"乙12"_s, u"甲12"_s}));
    EXPECT_EQ(collection_->tally().failureWords(), u"失败 1 次：没有写入 1"_s);
}

TEST_F(CollectionTest, ARunEndsByWhatItFindsAndSaysSo) {
    const auto silent = [](const QString&) { return std::optional<QByteArray>(); };
    const auto good = [](const QString&) { return std::optional<QByteArray>("1"); };
    int request = 0;
    const auto third = [&](const QString&) {
        return ++request % 3 > 0 ? std::nullopt : std::optional<QByteArray>("1");
    };
    QList<Item> halfDone = itemsNamed(2);
    halfDone[0].isDone = true;
    QList<Item> done = itemsNamed(1);
    done[0].isDone = true;
    const struct {
        QList<Item> items;
        std::function<std::optional<QByteArray>(const QString&)> answer;
        int refusals;
        RunState end;
        QString said;
    } cases[] = {
        {{}, good, 0, RunState::finished, u"没有要采集的项目"_s},
        {done, good, 0, RunState::finished, u"今天的 1 项都已采集过"_s},
        {halfDone, good, 0, RunState::finished, u"今天已采集过 1 项，写入 1 项"_s},
        {itemsNamed(5), silent, 0, RunState::hopeless, u"没有应答），请检查网络"_s},
        {itemsNamed(5), third, 0, RunState::finished, u"采集完成：共 5 项"_s},
        // Whatever is left has failed before: each is tried to its end.
        {itemsNamed(2), silent, 0, RunState::nothingRead, u"没有采集到数据：共 2 项，写入 0 项"_s},
        {itemsNamed(60), good, 9999, RunState::storeRefuses, u"采集库接连不能写入"_s},
    };
    pace({1000, 3000}, 3);
    job_.pagesOfAnItem = 1;
    for (const auto& it : cases) {
        job_.list = it.items;
        job_.refusals = it.refusals;
        job_.tries = 0;
        http_.answer = it.answer;
        runToTheEnd();
        EXPECT_EQ(collection_->state(), it.end) << it.said.toStdString();
        EXPECT_TRUE(holds(summary(), it.said));
    }
    EXPECT_EQ(job_.tries, 3) << "of 60 refused rows";
    EXPECT_EQ(http_.paths.size(), 3);
    job_.refusals = 0;
    job_.list = done;
    runToTheEnd(Scope::all);
    EXPECT_TRUE(summary().contains(u"共 1 项，写入 1 项"_s)) << "all anew";
    job_.deleted = u"0"_s;
    runToTheEnd(Scope::all);
    EXPECT_EQ(http_.paths.size(), 1) << "an item that is gone isn't tried again";
}

TEST_F(CollectionTest, APausedRunAsksForNothingAndSeesTheMainProgramsEndWithinAnItemToo) {
    for (const qsizetype end : {1, 2, 3}) {
        runHeat(u"update canshu set mainisrun=1"_s);
        onWait_ = [this, end](qsizetype waits) {
            if (waits == end) {
                collection_->setPaused(true);
                runHeat(u"update canshu set mainisrun=0"_s);
            }
        };
        const QList<int> waits = runToTheEnd();
        EXPECT_EQ(http_.paths.size(), end);
        EXPECT_LE(std::accumulate(waits.begin() + end, waits.end(), 0), 1000);
        EXPECT_TRUE(summary().startsWith(u"主程序已退出，采集结束：共 2 项"_s));
        EXPECT_EQ(collection_->items()[1].state, ItemState::waiting);
    }
}

TEST_F(CollectionTest, APauseDuringARequestKeepsItsPage) {
    http_.onGet = [this] { collection_->setPaused(http_.paths.size() == 2); };
    onWait_ = [this](qsizetype) {
        if (collection_->state() == RunState::paused) {
            EXPECT_EQ(job_.written, QStringList{u"甲12"_s});
            collection_->setPaused(false);
        }
    };
    runToTheEnd();
    EXPECT_EQ(http_.paths, (QStringList{u"/甲1"_s, u"/甲2"_s, u"/乙1"_s, u"/乙2"_s}));
}

TEST_F(CollectionTest, PaceAndEndAreToldByTheTimeOfWorkAlone) {
    pace({}, 20, 6000);
    job_.list = itemsNamed(10);
    job_.pagesOfAnItem = 1;
    QString pace;
    onWait_ = [&](qsizetype waits) {
        if (waits == 20) {
            collection_->setPaused(true);
        } else if (waits == 30) {
            collection_->setPaused(false);
            pace = collection_->tally().paceWords(QDateTime(QDate(2026, 11, 24), QTime(23, 59)));
        }
    };
    runToTheEnd();
    EXPECT_EQ(pace, u"每分钟 12 页，剩余约 32 秒，预计 23:59 完成"_s);
}

TEST_F(CollectionTest, AStopEndsTheRunWhereverItWaits) {
    job_.hosts = {u"a"_s, u"b"_s};
    job_.fault = StoreFault::busy;
    for (const bool beforeAPage : {true, false}) {
        SCOPED_TRACE(beforeAPage ? "before a page" : "for a held store");
        onWait_ = [&](qsizetype) { beforeAPage ? runs_.stop() : void(); };
        job_.refusals = beforeAPage ? 0 : 9999;
        run();
        runs_.stop();
        EXPECT_FALSE(runs_.running());
        EXPECT_EQ(http_.paths.size(), beforeAPage ? 2 : 4);
        EXPECT_EQ(summary(), u"采集已停止：共 2 项，写入 0 项，跳过 0 项，没有采集 2 项。"_s);
        EXPECT_EQ(collection_->items()[0].state, ItemState::waiting);
        EXPECT_TRUE(collection_->tally().failures.isEmpty());
    }
}

}  // namespace guanchao
