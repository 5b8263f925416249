#include <QChart>
#include <QLegend>
#include <QLegendMarker>
#include <QWheelEvent>

#include "frame/date_boxes.h"
#include "frame/day_plot.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_windows.h"

namespace guanchao {

TEST(EntryBoxTest, KeepsWhatWasTyped) {
    EntryBox box;
    const auto shown = [&]() -> QString {
        return box.currentText() + u' ' + QString::number(box.currentIndex());
    };
    box.refill({u"ABC"_s, u"abc"_s, u"x"_s});
    EXPECT_EQ(shown(), u" -1"_s);
    box.show();
    box.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    QTest::keyClicks(box.lineEdit(), u"ab"_s);
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(shown(), u"ab -1"_s) << "nothing is completed";
    EXPECT_EQ(box.count(), 3) << "nor taken into the list";
    box.setText(u"abc"_s);
    EXPECT_EQ(shown(), u"abc 1"_s) << "large and small letters differ";
    box.refill({u"x"_s, u"y"_s, u"abc"_s});
    EXPECT_EQ(shown(), u"abc 2"_s);
    QWheelEvent turn({}, {}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &turn);
    EXPECT_EQ(shown(), u"abc 2"_s) << "a turn of the wheel";
}

// Two lines over the left axis, one over the right.
class DayPlotTest : public ::testing::Test, protected DayPlot {
protected:
    DayPlotTest()
        : DayPlot({{u"a"_s, Qt::red}, {u"b"_s, Qt::green}, {u"c"_s, Qt::blue, PlotAxis::right}},
                  wholeNumbers, nullptr) {
        resize(600, 300);
        show();
    }

    void showValues(const QList<QList<double>>& values) {
        QList<DayValues> days;
        for (const QList<double>& it : values) {
            const int number = static_cast<int>(days.size()) + 1;
            days << DayValues{QDate(2026, 11, number), it, QString::number(number)};
        }
        showDays(days);
        QApplication::processEvents();
    }
    QString press(Qt::Key key) {
        QTest::keyClick(this, key);
        return chosenText();
    }
    QString pointAt(double part) {
        const QRectF area = chart()->plotArea();
        const QPoint place(static_cast<int>(area.left() + part * area.width()), 100);
        QTest::mouseMove(viewport(), place + QPoint(0, 1));
        QTest::mouseMove(viewport(), place);
        return chosenText();
    }
};

TEST_F(DayPlotTest, ADayIsChosenByKeysAndByThePointer) {
    EXPECT_EQ(press(Qt::Key_Left), QString()) << "there is no day";
    showValues({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
    EXPECT_EQ(press(Qt::Key_Left), u"3"_s) << "the last one first";
    EXPECT_EQ(press(Qt::Key_Right), u"3"_s);
    EXPECT_EQ(press(Qt::Key_Left), u"2"_s);
    EXPECT_EQ(pointAt(0.7), u"2"_s) << "the nearest";
    EXPECT_EQ(pointAt(0.8), u"3"_s);
    showValues({{1, 1, 1}});
    EXPECT_EQ(chosenText(), QString()) << "other days";
}

TEST_F(DayPlotTest, ALineJoinsDaysOfOneSourceOnly) {
    const auto parts = [&](const QStringList& sources) {
        QList<DayValues> days;
        for (const QString& it : sources) {
            const double value = static_cast<double>(days.size()) * 100;
            days << DayValues{QDate(2026, 11, 1).addDays(days.size()), {1, value, 3}, {}, it};
        }
        showDays(days);
        QStringList told;
        for (QAbstractSeries* it : chart()->series()) {
            auto* line = qobject_cast<QLineSeries*>(it);
            if (line->pen().color() == Qt::green) {
                told << QString::number(line->count());
            }
        }
        return told.join(u' ');
    };
    EXPECT_EQ(parts({u""_s, u""_s, u"e"_s, u"e"_s, u"e"_s, u""_s}), u"2 3 1"_s);
    const auto axes = chart()->axes(Qt::Vertical, chart()->series().last());
    EXPECT_EQ(axes, chart()->axes(Qt::Vertical, chart()->series()[2]))
        << "a further part is of the line's axis";
    EXPECT_EQ(chart()->legend()->markers(chart()->series().last()).first()->isVisible(), false);
    EXPECT_EQ(parts({u"e"_s, u"e"_s}), u"2"_s) << "and goes with its days";
    constexpr double gap = std::numeric_limits<double>::quiet_NaN();
    showValues({{1, gap, 1}, {1, 2, 1}, {1, 3, 1}, {1, gap, 1}, {1, 5, 1}});
    const auto* line = qobject_cast<QLineSeries*>(chart()->series()[1]);
    EXPECT_EQ(line->count(), 2) << "a day without a value is none of 0";
    EXPECT_EQ(qobject_cast<QLineSeries*>(chart()->series().last())->at(0).y(), 5);
}

}  // namespace guanchao
