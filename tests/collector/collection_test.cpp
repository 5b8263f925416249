#include "collector/collection.h"

#include "tests/support/store_test.h"

namespace guanchao {

using namespace std::chrono_literals;

namespace {

// Two pages an item: "/甲1", "/甲2".
class FakeJob : public Job {
public:
    QString title() const override { return u"试"_s; }
    QList<Item> items() const override { return list; }
    const Service& service() const override { return service_; }
    QStringList paths(const Item& item) const override {
        return {u'/' + item.key + u'1', u'/' + item.key + u'2'};
    }
    bool answers(const Item&, const QByteArray& page) const override { return page != "bad"; }
    void write(const Item& item, const QList<QByteArray>& pages) override {
        if (refused == item.key) {
            throw StoreError({}, QStringLiteral(GUANCHAO_SOURCE_DIR), {}, StoreFault::busy);
        }
        written << item.key + QString::fromUtf8(pages.join());
    }

    QList<Item> list = {{u"甲"_s, u"甲"_s}, {u"乙"_s, u"乙"_s}};
    QString refused;
    QStringList written;

private:
    Service service_;
};

}  // namespace

class CollectionTest : public StoreTest {
protected:
    CollectionTest() {
        http_.answer = [](const QString& path) { return path.last(1).toUtf8(); };
    }

    // Steps until the run ends, the clock moving by each pause; the pauses in milliseconds.
    QList<int> runToTheEnd() {
        QList<int> pauses;
        while (const auto pause = collection_.step()) {
            pauses << static_cast<int>(pause->count());
            clock_.moment = clock_.moment.addMSecs(pause->count());
        }
        return pauses;
    }

    void endMainProgram() { runHeat(u"update canshu set mainisrun=0"_s); }

    FakeJob job_;
    CollectorSettings settings_{
        .allPeriod = {}, .weights = {}, .pause = 100, .randomPause = 50, .retries = {1000, 3000}};
    Pacing pacing_{settings_, [] { return 0.5; }};
    Collection collection_{job_, store_.stores.heat, http_, clock_, pacing_};
};

TEST_F(CollectionTest, APageAStepAndAPauseBetweenAll) {
    collection_.begin();
    EXPECT_EQ(runToTheEnd(), (QList<int>{125, 125, 125}));
    EXPECT_EQ(http_.paths, (QStringList{u"/甲1"_s, u"/甲2"_s, u"/乙1"_s, u"/乙2"_s}));
    EXPECT_EQ(job_.written, (QStringList{u"甲12"_s, u"乙12"_s}));
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 2 项，跳过 0 项。"_s);
}

TEST_F(CollectionTest, AFailedItemComesAgainBehindTheOthersAndIsNamedInTheEnd) {
    pacing_ = Pacing(settings_, [] { return 0.0; });
    http_.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path == u"/甲2"_s ? std::nullopt : std::optional(path.last(1).toUtf8());
    };
    collection_.begin();
    // Behind the two items the first try again is waited for, looking each second whether the main
    // program lives; the second is waited for longer.
    EXPECT_EQ(runToTheEnd(), (QList<int>{100, 100, 100, 100, 700, 100, 100, 1000, 1000, 900, 100}));
    EXPECT_EQ(http_.paths.count(u"/甲1"_s), 3) << "an item is asked for as a whole again";
    EXPECT_EQ(job_.written, QStringList{u"乙12"_s});
    EXPECT_EQ(collection_.failures(), 3);
    EXPECT_EQ(collection_.settled(), 2);
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 1 项，跳过 1 项。\n跳过：甲"_s);
}

TEST_F(CollectionTest, AWrongPageAndAStoreInUseAreMendedByALaterTry) {
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
    collection_.begin();
    runToTheEnd();
    EXPECT_EQ(job_.written, (QStringList{u"甲12"_s, u"乙12"_s}));
    EXPECT_TRUE(reasons.contains(u"正被其他程序占用"_s)) << reasons.toStdString();
    EXPECT_EQ(collection_.failures(), 2);
    EXPECT_EQ(collection_.summary(), u"采集完成：共 2 项，写入 2 项，跳过 0 项。"_s);
}

TEST_F(CollectionTest, APausedRunAsksForNothingAndStillSeesTheMainProgramsEnd) {
    collection_.begin();
    collection_.setPaused(true);
    EXPECT_TRUE(collection_.step());
    EXPECT_TRUE(http_.paths.isEmpty());
    collection_.setPaused(false);
    collection_.step();
    collection_.step();
    collection_.setPaused(true);
    endMainProgram();
    EXPECT_EQ(collection_.step(), std::nullopt);
    EXPECT_EQ(collection_.summary(),
              u"主程序已退出，采集结束：共 2 项，写入 1 项，跳过 0 项，没有采集 1 项。"_s);
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
        Collection collection(job_, store_.stores.heat, http_, clock_, pacing);
        collection.begin();
        while (const auto pause = collection.step()) {
            clock_.moment = clock_.moment.addMSecs(pause->count());
        }
        EXPECT_EQ(collection.state(), it.end) << it.items;
    }
}

TEST_F(CollectionTest, AStopEndsTheRunAtOnce) {
    collection_.begin();
    collection_.step();
    collection_.stop();
    EXPECT_EQ(collection_.step(), std::nullopt);
    EXPECT_EQ(collection_.summary(),
              u"采集已停止：共 2 项，写入 0 项，跳过 0 项，没有采集 2 项。"_s);
    EXPECT_EQ(collection_.items()[0].state, ItemState::waiting);

    EXPECT_EQ(http_.paths.size(), 1);
}

}  // namespace guanchao
