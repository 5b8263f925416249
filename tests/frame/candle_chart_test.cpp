// The charts of prices under real keys and a real mouse.
#include "frame/candle_chart.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QWheelEvent>

#include "frame/day_line_chart.h"
#include "frame/looks.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_windows.h"

namespace guanchao {

// A rising week and a falling one by turns, from 2020-01-01 on.
static QList<Candle> days(int count) {
    QList<Candle> days;
    for (int number = 0; number < count; ++number) {
        const double open = 10 + number % 7, close = number / 7 % 2 == 0 ? open + 1 : open - 1;
        const double high = std::max(open, close), low = std::min(open, close);
        const QDate day = QDate(2020, 1, 1).addDays(number);
        days << Candle{day, open, high, low, close, 12345, 2e8};
    }
    return days;
}

class CandleChartTest : public ::testing::Test {
protected:
    CandleChartTest() {
        chart_.resize(800, 500);
        chart_.showBars(days(400));
        chart_.show();
        QApplication::processEvents();
    }

    QString press(int key) {
        QTest::keyClick(&chart_, static_cast<Qt::Key>(key));
        return chart_.chosenText().section(u' ', 0, 0);
    }
    QString pointAt(int x) {
        const QPointF place(x, 250);
        QMouseEvent move(QEvent::MouseMove, place, chart_.mapToGlobal(place), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(&chart_, &move);
        return chart_.chosenText().section(u' ', 0, 0);
    }
    void turnWheel(int x, int steps) {
        QWheelEvent turn({double(x), 200}, {double(x), 200}, {}, {0, 120 * steps}, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&chart_, &turn);
    }
    QString told() {
        return QAccessible::queryAccessibleInterface(&chart_)->text(QAccessible::Description);
    }
    int pixelsOf(const QString& name) {
        const QImage image = chart_.grab().toImage();
        const QRgb colour = colourOf(shownSheet(), name).rgb();
        int count = 0;
        for (int y = 28; y < image.height(); ++y) {  // under the words
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixel(x, y) == colour ? 1 : 0;
            }
        }
        return count;
    }

    CandleChart chart_;
};

TEST_F(CandleChartTest, KeysMoveTheCrossHairTheDaysFollowItAndToolsAreToldTheDay) {
    EXPECT_EQ(chart_.sight().first(), 280);
    EXPECT_EQ(press(Qt::Key_Left), u"2021-02-03"_s) << "the last one first";
    EXPECT_EQ(press(Qt::Key_Left), u"2021-02-02"_s);
    EXPECT_EQ(press(Qt::Key_Right), u"2021-02-03"_s);
    EXPECT_EQ(press(Qt::Key_Right), u"2021-02-03"_s);
    EXPECT_EQ(press(Qt::Key_Home), u"2020-01-01"_s);
    EXPECT_EQ(chart_.sight().first(), 0);
    EXPECT_EQ(press(Qt::Key_End), u"2021-02-03"_s);
    EXPECT_EQ(chart_.sight().first(), 280);
    press(Qt::Key_Plus);
    EXPECT_EQ(chart_.sight().count(), 96);
    EXPECT_EQ(chart_.sight().first() + chart_.sight().count(), 400) << "about the cross-hair";
    press(Qt::Key_Minus);
    EXPECT_EQ(chart_.sight().count(), 120);
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&chart_);
    EXPECT_TRUE(node->role() == QAccessible::Chart && node->text(QAccessible::Name) == u"K线图");
    press(Qt::Key_End);
    EXPECT_EQ(told(),
              u"2021-02-03 开 10.00 高 10.00 低 9.00 收 9.00 涨幅 -47.06% 量 1.234万 额"
              u" 2.000亿 MA5 14.20 MA10 13.60 MA20 13.30 MA60 13.08"_s);
    press(Qt::Key_Home);
    for (int day = 2; day <= 4; ++day) {
        press(Qt::Key_Right);
    }
    EXPECT_EQ(told(),
              u"2020-01-04 开 13.00 高 14.00 低 13.00 收 14.00 涨幅 +7.69% 量 1.234万 额"
              u" 2.000亿 MA5 -- MA10 -- MA20 -- MA60 --"_s)
        << "a mean needs all its days";
    chart_.showBars({});
    chart_.setHint(u"没有日线"_s);
    EXPECT_EQ(told(), u"没有日线"_s);
    EXPECT_EQ(press(Qt::Key_Left), QString()) << "there is no day";
    turnWheel(300, 1);
    pointAt(300);
}

TEST_F(CandleChartTest, PaintsRisingAndFallingDaysAtEveryZoomAndTheMarksOfTrades) {
    for (const int steps : {0, -20, 20}) {
        turnWheel(400, steps);
        EXPECT_GT(pixelsOf(u"rise"_s), 50) << steps;
        EXPECT_GT(pixelsOf(u"fall"_s), 50) << steps;
    }
    chart_.showBars({days(1).first()});
    const int plain = pixelsOf(u"fall"_s);
    chart_.mark(QDate(2020, 1, 1), TradeMark::sell);
    EXPECT_GT(pixelsOf(u"fall"_s), plain);
}

TEST(DayLineChartTest, KeysGoFromPriceToPriceAndNewPricesKeepTheChoice) {
    DayLineChart chart;
    chart.resize(600, 400);
    chart.show();
    DayLine line = {QDate(2026, 11, 24), 10, {{570, 10.1F, 1000, 10050}, {600, 9.9F, 2000, 20000}}};
    chart.showLine(line);
    QTest::keyClick(&chart, Qt::Key_Home);
    EXPECT_EQ(chart.chosenText(),
              u"2026-11-24 09:30 价 10.10 涨幅 +1.00% 均价 10.05 昨收 10.00 量 1000 额 1.005万"_s);
    line.points << DayPoint{605, 10, 2500, 25000};
    chart.showLine(line);
    EXPECT_TRUE(chart.chosenText().startsWith(u"2026-11-24 09:30"_s));
    QTest::keyClick(&chart, Qt::Key_End);
    EXPECT_TRUE(chart.chosenText().startsWith(u"2026-11-24 10:05 价 10.00 涨幅 0.00%"_s));
    line.day = QDate(2026, 11, 25);
    line.points.clear();
    chart.showLine(line);
    EXPECT_EQ(chart.chosenText(), QString()) << "another day";
}

}  // namespace guanchao
