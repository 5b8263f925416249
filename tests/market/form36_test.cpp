#include "market/form36.h"

#include "frame/candle_chart.h"
#include "market/candle_panel.h"
#include "tests/app/form2_fixture.h"

namespace guanchao {

// The main window with two stocks, and services that tell three days.
class Form36Test : public Form2Test {
protected:
    Form36Test() {
        services_.history = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s}};
        services_.factors = {{u"http://f"_s, {}, 0}};
        http_.answer = [](const QString& path) -> std::optional<QByteArray> {
            return path.endsWith(u"hfq.js")
                       ? R"(var sh600000hfq={"data":[{"d":"2026-11-20","f":"2"}]})"
                       : R"([{"day":"2026-11-19","open":"10","high":"10","low":"10","close":"10",)"
                         R"("volume":"5"},{"day":"2026-11-20","open":"5","high":"5","low":"5",)"
                         R"("close":"5","volume":"5"},{"day":"2026-11-23","open":"6","high":"6",)"
                         R"("low":"6","close":"6","volume":"5"}])";
        };
    }

    // The history is read in a thread of its own.
    void settle() {
        until([this] { return !find<CandlePanel>(u"candles"_s)->isReading(); });
    }
    Form36* openOn(const QString& dm) {
        globals_.dangqiandm = dm;
        return open<Form36>();
    }
    CandleChart& chart() const { return *find<CandleChart>(u"candleChart"_s); }
    QString closes() {
        QStringList texts;
        QTest::keyClick(&chart(), Qt::Key_Home);
        for (int day = 0; day < 3; ++day) {
            texts << chart().chosenText().section(u"收 "_s, 1).section(u' ', 0, 2);
            QTest::keyClick(&chart(), Qt::Key_Right);
        }
        return texts.join(u'|');
    }
};

TEST_F(Form36Test, F6InARowOpensItAndPageKeysGoThroughTheList) {
    load();
    trigger(u"全部显示"_s);
    activate();
    click(u"MSHFlexGrid2"_s, 1, 2);
    const QStringList codes = columnTexts(grid(u"MSHFlexGrid2"_s), 2);
    QTest::keyClick(&view(u"MSHFlexGrid2"_s), Qt::Key_F6);
    form_ = shownWindow<Form36>();
    ASSERT_TRUE(form_ && QTest::qWaitForWindowActive(form_));
    const auto untilItShows = [&](int row) {
        until([&] { return text(u"Text7"_s) == codes[row]; });
        settle();
    };
    untilItShows(1);
    QTest::keyClick(form_.data(), Qt::Key_PageDown);
    untilItShows(2);
    QTest::keyClick(form_.data(), Qt::Key_PageUp);
    untilItShows(1);
}

TEST_F(Form36Test, ShowsTheDaysAdjustedOrNotAndWhoToldThem) {
    openOn(u"SH600000"_s);
    settle();
    auto* adjustments = find<QComboBox>(u"adjustments"_s);
    const QStringList expected = {u"5.00 涨幅 --|5.00 涨幅 0.00%|6.00 涨幅 +20.00%"_s,
                                  u"10.00 涨幅 --|10.00 涨幅 0.00%|12.00 涨幅 +20.00%"_s,
                                  u"10.00 涨幅 --|5.00 涨幅 0.00%|6.00 涨幅 +20.00%"_s};
    for (int choice = 0; choice < adjustments->count(); ++choice) {
        adjustments->setCurrentIndex(choice);
        EXPECT_EQ(closes(), expected[choice]) << choice;
    }
}

TEST_F(Form36Test, WhatCannotBeReadIsToldInPlaceOfTheChartAndReadAgain) {
    const auto answers = std::exchange(http_.answer, nullptr);
    openOn(u"SH600000"_s);
    settle();
    EXPECT_TRUE(begins(chart().hint(), u"没有日线可画\n\n历史行情 新浪（http://h）："_s));
    EXPECT_TRUE(chart().hint().endsWith(u"过一会儿再按“重读”。"_s));
    EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty());
    http_.answer = answers;
    button(u"readAgain"_s)->click();
    settle();
    EXPECT_NE(closes(), u"||"_s);
    openOn({});
    EXPECT_TRUE(chart().hint().startsWith(u"没有选股票"_s));
    EXPECT_FALSE(button(u"readAgain"_s)->isEnabled());
}

// The history, the days and the factors.
TEST_F(Form36Test, ItMayCloseOrBeStoppedWhereverItsReadingWaits) {
    constexpr int requests = 2;
    for (int held = 0; held <= requests; ++held) {
        for (const bool closes : {false, true}) {
            int asked = 0;
            const auto gate = std::make_shared<Later<bool>>();
            http_.onGet = [&] { http_.gate = ++asked == held ? gate : nullptr; };
            openOn(u"SH600000"_s);
            until([&] { return asked == held; });
            ASSERT_TRUE(find<CandlePanel>(u"candles"_s)->isReading()) << held;
            if (closes) {
                form_->close();
            } else {
                QTest::keyClick(form_.data(), Qt::Key_Escape);
                EXPECT_TRUE(form_->isVisible());
                EXPECT_EQ(chart().hint(), u"已停止，按“重读”再读一遍"_s);
                EXPECT_FALSE(find<CandlePanel>(u"candles"_s)->isReading());
                QTest::keyClick(form_.data(), Qt::Key_Escape);
                EXPECT_FALSE(form_->isVisible());
            }
            deleteClosedWindows();
            gate->deliver(true);
            EXPECT_EQ(asked, held);
        }
    }
    EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty());
}

}  // namespace guanchao
