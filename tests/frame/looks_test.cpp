#include "frame/looks.h"

#include <QSettings>
#include <QTemporaryDir>

#include "app/form2.h"
#include "base/contrast.h"
#include "grid/colours.h"
#include "market/quote_figures.h"
#include "tests/support/window_test.h"

namespace guanchao {

static std::uint32_t value(Sheet sheet, const QString& name) {
    return colourOf(sheet, name).rgb() & 0xFFFFFF;
}

TEST(LooksTest, EveryPairOfWordsAndGroundCanBeRead) {
    const std::pair<QString, QStringList> pairs[] = {
        {u"text"_s,
         {u"field"_s, u"button"_s, u"buttonHover"_s, u"selected"_s, u"hovered"_s, u"otherRow"_s,
          u"done"_s}},
        {u"words"_s, {u"ground"_s, u"bar"_s}},
        {u"faint"_s, {u"ground"_s, u"bar"_s, u"offField"_s, u"field"_s}},
        {u"hint"_s, {u"field"_s, u"table"_s}},
        {u"cell"_s, {u"table"_s, u"marked"_s}},
        {u"good"_s, {u"ground"_s}},
        {u"link"_s, {u"ground"_s}},
        {u"choiceText"_s, {u"choice"_s, u"ticked"_s}},
        {u"headerText"_s, {u"header"_s, u"headerHover"_s}},
        {u"practiceText"_s, {u"practice"_s}},
        {u"tipText"_s, {u"button"_s}},
        {u"rise"_s, {u"field"_s}},
        {u"fall"_s, {u"field"_s}},
    };
    for (const Sheet sheet : {Sheet::dark, Sheet::light}) {
        for (const auto& [words, grounds] : pairs) {
            for (const QString& ground : grounds) {
                EXPECT_GE(contrast(value(sheet, words), value(sheet, ground)), 4.5)
                    << words.toStdString() << " on " << ground.toStdString();
            }
        }
        for (const Colour colour : {textColour, themeColour, stockColour, riseColour, fallColour,
                                    gainColour, lossColour, darkTextColour}) {
            for (const std::uint32_t ground :
                 {value(sheet, u"table"_s), value(sheet, u"marked"_s), value(sheet, u"ground"_s),
                  themeColour, stockColour, riseColour, fallColour, firedGround}) {
                EXPECT_GE(contrast(readableOn(colour, ground), ground), 4.5)
                    << std::hex << colour << " on " << ground;
            }
        }
    }
}

TEST(LooksTest, ASheetHasAColourForEachOfItsNames) {
    for (const Sheet sheet : {Sheet::dark, Sheet::light}) {
        const QString text = styleSheetOf(sheet, 9);
        EXPECT_FALSE(text.contains(u'@'));
        EXPECT_TRUE(text.contains(u"font-size: 9pt"_s));
    }
}

class FakeColourScheme : public ColourScheme {
public:
    std::optional<bool> isDark() const override { return dark; }
    void whenChanged(std::function<void()> changed) override { changed_ = std::move(changed); }
    void change(std::optional<bool> to) {
        dark = to;
        changed_();
    }

    std::optional<bool> dark;

private:
    std::function<void()> changed_;
};

class LooksMenuTest : public WindowTest {
protected:
    ~LooksMenuTest() override { applyLooks(*qApp); }

    void start() {
        main_.reset();
        desktop_.colours = &scheme_;
        main_ = std::make_unique<Form2>(environment_, windows_, desktop_);
    }

    FakeColourScheme scheme_;
    std::unique_ptr<Form2> main_;
};

TEST_F(LooksMenuTest, FollowsTheDesktopUntilTheUserChoosesAndKeepsTheChoice) {
    start();
    EXPECT_EQ(shownSheet(), Sheet::dark) << "a desktop that tells nothing";
    scheme_.change(false);
    EXPECT_EQ(shownSheet(), Sheet::light);
    const auto& themes = *child<GridView>(main_.get(), u"MSHFlexGrid1"_s);
    const int usual = themes.verticalHeader()->defaultSectionSize();
    chooseEntry(*main_, u"深色"_s);
    chooseEntry(*main_, u"字号特大"_s);
    main_->show();
    EXPECT_GT(themes.verticalHeader()->defaultSectionSize(), usual);
    start();
    EXPECT_EQ(shownSheet(), Sheet::dark);
    EXPECT_EQ(QApplication::font().pointSize(), 14);
    chooseEntry(*main_, u"颜色跟随桌面"_s);
    EXPECT_EQ(shownSheet(), Sheet::light);
}

// What another program or a hand has written there.
TEST(LooksTest, AChoiceThatCantBeIsTheStandard) {
    const QTemporaryDir folder;
    const QString ini = folder.filePath(u"界面.ini"_s);
    for (const QString& value : {u"9"_s, u"-1"_s, u"x"_s, QString()}) {
        QSettings settings(ini, QSettings::IniFormat);
        settings.setValue(u"外观/颜色"_s, value);
        settings.setValue(u"外观/字号"_s, u"999"_s);
        settings.sync();
        EXPECT_EQ(keptLooks(ini).colours, ColourChoice::desktop) << value.toStdString();
        EXPECT_LE(keptLooks(ini).points, 20);
    }
}

}  // namespace guanchao
