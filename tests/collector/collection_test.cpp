#include "collector/collection.h"

#include "tests/support/store_test.h"

namespace guanchao {

namespace {

// Two pages an item: "/甲1", "/甲2".
class FakeJob : public Job {
public:
    QString title() const override { return u"试"_s; }
    QList<Item> items() const override { return list; }
    std::unique_ptr<PageSource> source(HttpClient& http) const override {
        return std::make_unique<WebPages>(http, QList<Service>(2));
    }
    int ways() const override { return services; }
    // Those of the second service: "/甲1b".
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override {
        const QString place = QString::number(asked.pages.size() + 1);
        return asked.pages.size() < pagesOfAnItem
                   ? std::optional<QString>(u'/' + item.key + place +
                                            (asked.way > 0 ? u"b"_s : u""_s))
                   : std::nullopt;
    }
    QString faultOf(const Item&, const Asked&, const QByteArray& page) const override {
        return page == "bad" ? u"坏"_s : QString();
    }
    void write(const Item& item, const Asked& asked) override {
        if (refused == item.key) {
            throw StoreError({}, QStringLiteral(GUANCHAO_SOURCE_DIR), {}, StoreFault::busy);
        }
        written << item.key + QString::fromUtf8(asked.pages.join());
    }

    QList<Item> list = {{u"甲"_s, u"甲"_s}, {u"乙"_s, u"乙"_s}};
    int services = 1;
    qsizetype pagesOfAnItem = 2;
    QString refused;
    QStringList written;
};

}  // namespace

class CollectionTest : public StoreTest {
protected:
    CollectionTest() {
        http_.answer = [](const QString& path) { return path.last(1).toUtf8(); };
    }

    void start() {
        collection_.begin();
        runs_.start([this](std::stop_token stop) { return collection_.run(stop); });
    }
    // The waits in milliseconds.
    QList<int> runToTheEnd() {
        start();
        EXPECT_FALSE(runs_.running());
        return waits_;
    }
    // The clock moves by each wait.
    QCoro::Task<> wait(std::chrono::milliseconds time, std::stop_token stop) {
        waits_ << static_cast<int>(time.count());
        clock_.moment = clock_.moment.addMSecs(time.count());
        if (onWait_) {
            onWait_(waits_.size());
        }
        endIfStopped(stop);
        co_return;
    }

    void endMainProgram() { runHeat(u"update canshu set mainisrun=0"_s); }

    FakeJob job_;
    CollectorSettings settings_{
        .allPeriod = {}, .weights = {}, .pause = 100, .randomPause = 50, .retries = {1000, 3000}};
    Pacing pacing_{settings_, [] { return 0.5; }};
    QList<int> waits_;
    std::function<void(qsizetype)> onWait_;
    Wait wait_ = [this](auto time, auto stop) { return wait(time, stop); };
    Collection collection_{job_, store_.stores.heat, http_, clock_, pacing_, wait_};
    Runs runs_{failures_};
};

TEST_F(CollectionTest, PageAfterPageWithAPauseBetweenAll) {
    EXPECT_EQ(runToTheEnd(), (QList<int>{125, 125, 125}));
    EXPECT_EQ(http_.paths, (QStringList{u"/甲1"_s, u"/甲2"_s, u"/乙1"_s, u"/乙2"_s}));
    EXPECT_EQ(job_.written, (QStringList{u"甲12"_s, u"乙12"_s}));
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 2 项，跳过 0 项。"_s);
}

TEST_F(CollectionTest, ARequestStandsThoughTheJobWouldDecideOtherwiseByThen) {
    onWait_ = [this](qsizetype waits) { job_.pagesOfAnItem = waits == 1 ? 1 : 2; };
    runToTheEnd();
    EXPECT_EQ(http_.paths.first(2), (QStringList{u"/甲1"_s, u"/甲2"_s}));
    EXPECT_EQ(collection_.failures(), 0);
}

TEST_F(CollectionTest, AFailedItemComesAgainBehindTheOthersAndIsNamedInTheEnd) {
    pacing_ = Pacing(settings_, [] { return 0.0; });
    http_.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path == u"/甲2"_s ? std::nullopt : std::optional(path.last(1).toUtf8());
    };
    // Behind the two items the first try again is waited for, looking each second whether the main
    // program lives; the second is waited for longer.
    EXPECT_EQ(runToTheEnd(), (QList<int>{100, 100, 100, 100, 700, 100, 100, 1000, 1000, 900, 100}));
    EXPECT_EQ(http_.paths.count(u"/甲1"_s), 3) << "an item is asked for as a whole again";
    EXPECT_EQ(job_.written, QStringList{u"乙12"_s});
    EXPECT_EQ(collection_.failures(), 3);
    EXPECT_EQ(collection_.settled(), 2);
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 1 项，跳过 1 项。\n跳过：甲"_s);
}

TEST_F(CollectionTest, ASecondServiceIsAskedFromTheStartWhereTheFirstFails) {
    job_.services = 2;
    settings_.retries = {};
    pacing_ = Pacing(settings_, [] { return 0.0; });
    http_.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path.contains(u'乙') || path == u"/甲2"_s ? std::optional<QByteArray>("bad")
                                                         : path.sliced(2).toUtf8();
    };
    EXPECT_EQ(runToTheEnd(), QList<int>(5, 100)) << "with the same pauses";
    EXPECT_EQ(http_.paths,
              (QStringList{u"/甲1"_s, u"/甲2"_s, u"/甲1b"_s, u"/甲2b"_s, u"/乙1"_s, u"/乙1b"_s}));
    EXPECT_EQ(job_.written, QStringList{u"甲1b2b"_s});
    EXPECT_EQ(collection_.items()[1].reason, u"坏"_s);
}

TEST_F(CollectionTest, AWrongPageAndAStoreInUseAreMendedByALaterTry) {
    const Impatience impatience;
    pacing_ = Pacing(settings_, [] { return 0.0; });
    job_.refused = u"乙"_s;
    http_.answer = [this](const QString& path) {
        if (http_.paths.count(u"/乙2"_s) > 1) {
            job_.refused.clear();
        }
        return path == u"/甲1"_s && http_.paths.count(path) == 1 ? "bad" : path.last(1).toUtf8();
    };
    QString reasons;
    collection_.changed = [&](qsizetype at) { reasons += collection_.items()[at].reason; };
    runToTheEnd();
    EXPECT_EQ(job_.written, (QStringList{u"甲12"_s, u"乙12"_s}));
    EXPECT_TRUE(reasons.contains(u"正被其他程序占用"_s)) << reasons.toStdString();
    EXPECT_EQ(collection_.failures(), 2);
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 2 项，跳过 0 项。"_s);
}

TEST_F(CollectionTest, APausedRunAsksForNothingAndStillSeesTheMainProgramsEnd) {
    collection_.setPaused(true);
    onWait_ = [this](qsizetype waits) {
        if (waits == 1) {
            EXPECT_TRUE(http_.paths.isEmpty());
            collection_.setPaused(false);
        } else if (waits == 3) {
            collection_.setPaused(true);
            endMainProgram();
        }
    };
    EXPECT_EQ(runToTheEnd(), (QList<int>{250, 125, 125}));
    EXPECT_EQ(collection_.summary(),
              u"主程序已退出，采集结束：共 2 项，写入 1 项，跳过 0 项，没有采集 1 项。"_s);
}

TEST_F(CollectionTest, APauseDuringARequestKeepsItsPage) {
    http_.onGet = [this] { collection_.setPaused(http_.paths.size() == 2); };
    onWait_ = [this](qsizetype) {
        if (collection_.state() == RunState::paused) {
            EXPECT_EQ(job_.written, QStringList{u"甲12"_s});
            collection_.setPaused(false);
        }
    };
    EXPECT_EQ(runToTheEnd().size(), 3);
    EXPECT_EQ(http_.paths, (QStringList{u"/甲1"_s, u"/甲2"_s, u"/乙1"_s, u"/乙2"_s}));
}

TEST_F(CollectionTest, ARunIsGivenUpWhenPageAfterPageFailsWhileItemsAreLeft) {
    const struct {
        int items;
        std::function<bool(int request)> fails;
        RunState end;
    } cases[] = {
        {5, [](int) { return true; }, RunState::hopeless},
        {5, [](int request) { return request % 3 > 0; }, RunState::finished},
        // Whatever is left has failed before: each is tried to its end.
        {2, [](int) { return true; }, RunState::finished},
    };
    settings_.giveUpAfter = 3;
    for (const auto& it : cases) {
        job_.list.clear();
        for (int at = 0; at < it.items; ++at) {
            job_.list << Item{QString::number(at), QString::number(at)};
        }
        int request = 0;
        http_.answer = [&](const QString&) -> std::optional<QByteArray> {
            return it.fails(++request) ? std::nullopt : std::optional(QByteArray("1"));
        };
        const Pacing pacing(settings_, [] { return 0.0; });
        Collection collection(job_, store_.stores.heat, http_, clock_, pacing, wait_);
        collection.begin();
        runs_.start([&](std::stop_token stop) { return collection.run(stop); });
        EXPECT_EQ(collection.state(), it.end) << it.items;
    }
}

TEST_F(CollectionTest, AStopEndsTheRunWhereverItWaits) {
    struct Case {
        const char* where;
        std::function<void()> prepare;
        qsizetype requests;
    };
    for (const Case& it : {
             Case{"before a page", [this] { onWait_ = [this](qsizetype) { runs_.stop(); }; }, 1},
             Case{"for a page", [this] { http_.gate = std::make_shared<Later<bool>>(); }, 1},
             Case{"for a held store", [this] { job_.refused = u"甲"_s; }, 2},
         }) {
        SCOPED_TRACE(it.where);
        http_.gate.reset();
        http_.paths.clear();
        onWait_ = {};
        it.prepare();
        Collection collection(job_, store_.stores.heat, http_, clock_, pacing_, wait_);
        collection.begin();
        runs_.start([&](std::stop_token stop) { return collection.run(stop); });
        runs_.stop();
        EXPECT_FALSE(runs_.running());
        EXPECT_EQ(http_.paths.size(), it.requests);
        EXPECT_EQ(collection.summary(),
                  u"采集已停止：共 2 项，写入 0 项，跳过 0 项，没有采集 2 项。"_s);
        EXPECT_EQ(collection.items()[0].state, ItemState::waiting);
        EXPECT_EQ(collection.failures(), 0);
    }
}

}  // namespace guanchao
