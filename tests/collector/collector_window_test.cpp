#include "collector/collector_window.h"

#include <QPlainTextEdit>

#include "collector/commodities_job.h"
#include "platform/qt_http_client.h"
#include "tests/support/raw_service.h"
#include "tests/support/window_test.h"

namespace guanchao {

class CollectorWindowTest : public WindowTest {
protected:
    CollectorWindowTest() {
        runHeat(u"insert into shopname(shopname,guanzhudu) values('铜',3),('铝',2),('锌',1)"_s);
        http_.answer = [](const QString& path) -> std::optional<QByteArray> {
            return path.contains(u"%C2%C1"_s) ? std::nullopt
                                              : std::optional(u"相关结果约1个"_s.toUtf8());
        };
        openOver({});
    }

    // A window over a run that has asked for nothing yet.
    void openOver(const Service& search) {
        window_.reset();
        job_ = std::make_unique<CommoditiesJob>(stores_, order_, settings_, QList<Service>{search},
                                                clock_);
        collection_ = std::make_unique<Collection>(*job_, stores_.heat, http_, time_, pacing_);
        collection_->begin();
        window_ = std::make_unique<CollectorWindow>(*collection_, dialogs_, failures_, time_,
                                                    job_->title());
        form_ = window_.get();
        window_->ended = [this] { ++ends_; };
        window_->again = [this](Scope scope) { again_ << scope; };
        window_->show();
    }

    QStringList states() { return rowTexts(gridOf(*window_->findChild<GridView*>())).mid(1); }

    void letRun(qsizetype requests) {
        until([&] { return http_.paths.size() >= requests; });
    }

    CollectorSettings settings_{
        .allPeriod = {}, .weights = {}, .pause = 0, .randomPause = 0, .retries = {}};
    RunOrder order_{.day = clock_.now().date(), .yinqingurl = u"http://h/s?wd=tihuandm"_s};
    Pacing pacing_{settings_, [] { return 0.0; }};
    std::unique_ptr<CommoditiesJob> job_;
    std::unique_ptr<Collection> collection_;
    SystemClock time_;
    int ends_ = 0;
    QList<Scope> again_;
    std::unique_ptr<CollectorWindow> window_;
};

TEST_F(CollectorWindowTest, ARunShowsWhatBecameOfEachItemAndTellsItsEnd) {
    window_->start();
    letRun(3);
    EXPECT_EQ(ends_, 1);
    EXPECT_EQ(states(), (QStringList{u"1|铜|已写入|"_s, u"2|铝|已跳过|网页没有读到：没有应答"_s,
                                     u"3|锌|已写入|"_s}));
    const GridView& list = view(u"itemsGrid"_s);
    EXPECT_EQ(list.horizontalHeader()->length(), list.viewport()->width()) << "no gap";
    EXPECT_EQ(label(u"stateLabel"_s), u"采集完成：共 3 项，写入 2 项，跳过 1 项。"_s);
    EXPECT_EQ(label(u"progressLabel"_s), u"已完成 3 / 3 项，剩余 0 项；读到 2 页，写入 2 行"_s);
    EXPECT_EQ(label(u"failuresLabel"_s), u"失败 1 次：没有应答 1"_s);
    EXPECT_EQ(find<QPlainTextEdit>(u"skippedText"_s)->toPlainText(), u"铝"_s);
    EXPECT_EQ(window_->findChild<QProgressBar*>()->value(), 3);
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    int helps = 0;
    window_->help = [&] { ++helps; };
    QTest::keyClick(window_->focusWidget(), Qt::Key_F1);
    EXPECT_EQ(helps, 1);
    click(u"goOnButton"_s);
    click(u"anewButton"_s);
    EXPECT_EQ(again_, (QList<Scope>{Scope::rest, Scope::all}));
    runHeat(u"update canshu set mainisrun=0"_s);
    click(u"anewButton"_s);
    EXPECT_EQ(again_.size(), 2) << "the main program is gone";
    EXPECT_TRUE(label(u"waitLabel"_s).startsWith(u"主程序已退出"_s));
    EXPECT_FALSE(button(u"goOnButton"_s)->isEnabled());
    runHeat(u"update canshu set mainisrun=1"_s);
    until([this] { return button(u"goOnButton"_s)->isEnabled(); });
    click(u"closeButton"_s);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(dialogs_.shown.isEmpty()) << "nothing is left to be stopped";
}

TEST_F(CollectorWindowTest, APauseHoldsTheRunAndClosingAsksBeforeItStops) {
    window_->start();
    letRun(1);
    click(u"pauseButton"_s);
    EXPECT_EQ(label(u"stateLabel"_s), u"已暂停：共 3 项，写入 1 项，跳过 0 项。"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(http_.paths.size(), 1);
    dialogs_.answer = false;
    window_->close();
    EXPECT_TRUE(window_->isVisible());
    click(u"pauseButton"_s);
    letRun(2);
    dialogs_.answer = true;
    window_->close();
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(collection_->state(), RunState::stopped);
    QCoreApplication::processEvents();
    EXPECT_EQ(http_.paths.size(), 2);
}

TEST_F(CollectorWindowTest, ARequestThatTakesForEverHoldsNoButtonAndIsBrokenOff) {
    RawService search;
    http_.client = std::make_unique<QtHttpClient>();
    const std::function<void()> ways[] = {
        [this] { click(u"stopButton"_s); },
        [this] { window_->close(); },
        [this] { window_.reset(); },
    };
    for (const ServiceManner& it : neverDone) {
        for (const auto& end : ways) {
            SCOPED_TRACE(it.what);
            search.requests.clear();
            search.answer = it.answer;
            ends_ = 0;
            openOver(search.service());
            window_->start();
            ASSERT_TRUE(QTest::qWaitFor([&] { return !search.requests.isEmpty(); }));
            click(u"pauseButton"_s);
            EXPECT_TRUE(label(u"stateLabel"_s).startsWith(u"已暂停"_s));
            click(u"pauseButton"_s);
            EXPECT_TRUE(label(u"stateLabel"_s).startsWith(u"正在采集"_s));
            const int before = search.hangUps;
            end();
            EXPECT_EQ(collection_->state(), RunState::stopped);
            EXPECT_EQ(ends_, window_ ? 1 : 0);
            EXPECT_EQ(collection_->items().first().state, ItemState::waiting);
            EXPECT_TRUE(QTest::qWaitFor([&] { return search.hangUps > before; }));
        }
    }
}

}  // namespace guanchao
