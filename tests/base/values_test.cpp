#include "base/values.h"

#include <limits>

#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(Values, NumericPrefixTakesTheLeadingNumber) {
    const std::pair<QString, double> cases[] = {
        {u""_s, 0},
        {u"   "_s, 0},
        {u"12abc"_s, 12},
        {u"-3.5x"_s, -3.5},
        {u"+4"_s, 4},
        {u".5"_s, 0.5},
        {u"-"_s, 0},
        {u"1e3"_s, 1000},
        {u"1e"_s, 1},
        {u"2E-2z"_s, 0.02},
        {u"1,000"_s, 1},
        {u"１２"_s, 0},
        {u"1e-999"_s, 0},
        {u"1e999"_s, 1.7976931348623157e308},
        {u"-1e999"_s, -1.7976931348623157e308},
        {u"0."_s + QString(400, u'0') + u'1', 0},
        {u"000000000000000000000000000000000000000000000000000000000000000000012"_s, 12}};
    for (const auto& [text, number] : cases) {
        EXPECT_DOUBLE_EQ(numericPrefix(text), number) << text.toStdString();
    }
}

TEST(Values, ALongTextIsShownByItsBeginning) {
    EXPECT_EQ(shortened(u"四个汉字"_s, 4), u"四个汉字"_s);
    EXPECT_EQ(shortened(u"五个汉字了"_s, 4), u"五个汉…"_s);
    EXPECT_EQ(shortened(u"一二😀三"_s, 4), u"一二…"_s) << "no half of a character";
}

TEST(Values, RoundingGoesToTheEvenNeighbour) {
    const std::pair<double, double> whole[] = {{0.5, 0},  {1.5, 2},   {2.5, 2},   {20.5, 20},
                                               {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {2.6, 3}};
    for (const auto& [value, rounded] : whole) {
        EXPECT_EQ(roundToWhole(value), rounded) << value;
    }
    EXPECT_DOUBLE_EQ(roundTo(0.00625, 4), 0.0062);
    EXPECT_DOUBLE_EQ(roundTo(0.01875, 4), 0.0188);
    EXPECT_DOUBLE_EQ(roundTo(-0.00625, 4), -0.0062);
    EXPECT_DOUBLE_EQ(roundTo(-1.23456, 4), -1.2346);
    EXPECT_DOUBLE_EQ(roundTo(1e306, 4), 1e306);
}

TEST(Values, NumberTextCarriesFifteenDigits) {
    const std::pair<double, QString> cases[] = {
        {0, u"0"_s},
        {-0.0, u"0"_s},
        {0.1 + 0.2, u"0.3"_s},
        {2.0 / 3, u"0.666666666666667"_s},
        {0.00001, u"0.00001"_s},
        {1.0 / 30, u"3.33333333333333E-02"_s},
        {123456789012345, u"123456789012345"_s},
        {999999999999999.9, u"1E+15"_s},
        {-1.5e20, u"-1.5E+20"_s},
        {1e-15, u"0.000000000000001"_s},
        {-std::numeric_limits<double>::infinity(), u"-1.79769313486232E+308"_s},
        {std::numeric_limits<double>::quiet_NaN(), u"0"_s}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(numberText(value), text);
    }
}

TEST(Values, TwoDecimalsRoundHalvesAwayFromZero) {
    const std::pair<double, QString> cases[] = {
        {0, u"0.00"_s},
        {0.125, u"0.13"_s},
        {-0.125, u"-0.13"_s},
        {2.675, u"2.68"_s},
        {1.005, u"1.01"_s},
        {0.005, u"0.01"_s},
        {0.0049, u"0.00"_s},
        {-0.001, u"0.00"_s},
        {9.995, u"10.00"_s},
        {123456789012.125, u"123456789012.13"_s},
        {1234567890123456789.0, u"1234567890123460000.00"_s},
        {12345678.994, u"12345678.99"_s}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(twoDecimals(value), text) << value;
    }
    EXPECT_EQ(noDecimals(0.5), u"1"_s);
    EXPECT_EQ(noDecimals(-2.5), u"-3"_s);
}

TEST(Values, TimesAndBlankSafeTexts) {
    EXPECT_EQ(timeText(QDateTime(QDate(2016, 4, 1), QTime(0, 5, 9))), u"2016-04-01 00:05:09"_s);
    EXPECT_EQ(quoted(u" it's ''"_s + QChar::Null), u"' it''s '''''"_s);
    EXPECT_EQ(quoted({}), u"''"_s);
    EXPECT_EQ(kongzhuanhuan(u" it's "_s), u" it's "_s);
    EXPECT_EQ(trimBlanks(u"  主题\u3000 "_s), u"主题\u3000"_s);
    for (const QString& blank : {QString(), u""_s, u"   "_s}) {
        EXPECT_EQ(kongzhuanhuan(blank), QString());
    }
}

}  // namespace guanchao
