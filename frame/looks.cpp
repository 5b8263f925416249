#include "frame/looks.h"

#include <QFont>
#include <QPalette>
#include <QSettings>
#include <QStyleFactory>
#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int smallestPoints = 8;
constexpr int largestPoints = 20;

const QString coloursKey = u"外观/颜色"_s;
const QString pointsKey = u"外观/字号"_s;

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): what the one application
// shows
Sheet shown = Sheet::dark;

QPalette paletteOf(Sheet sheet) {
    const struct {
        QPalette::ColorRole role;
        QString name;
    } colours[] = {
        {QPalette::Window, u"ground"_s},
        {QPalette::WindowText, u"words"_s},
        {QPalette::Base, u"field"_s},
        {QPalette::AlternateBase, u"otherRow"_s},
        {QPalette::Text, u"text"_s},
        {QPalette::Button, u"button"_s},
        {QPalette::ButtonText, u"text"_s},
        {QPalette::Highlight, u"choice"_s},
        {QPalette::HighlightedText, u"choiceText"_s},
        {QPalette::Link, u"link"_s},
        {QPalette::Mid, u"line"_s},
        {QPalette::ToolTipBase, u"button"_s},
        {QPalette::ToolTipText, u"tipText"_s},
        {QPalette::PlaceholderText, u"hint"_s},
    };
    QPalette palette;
    for (const auto& it : colours) {
        palette.setColor(it.role, colourOf(sheet, it.name));
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colourOf(sheet, u"faint"_s));
    }
    return palette;
}

QFont fontOf(int points) {
    QFont font;
    font.setFamilies({u"Noto Sans CJK SC"_s, u"Noto Sans SC"_s, u"Microsoft YaHei"_s});
    font.setPointSize(points);
    return font;
}

Sheet sheetOf(ColourChoice choice, std::optional<Sheet> desktop) {
    if (choice == ColourChoice::desktop) {
        return desktop.value_or(Sheet::dark);
    }
    return choice == ColourChoice::light ? Sheet::light : Sheet::dark;
}

}  // namespace

LooksChoice keptLooks(const QString& iniPath) {
    const QSettings settings(iniPath, QSettings::IniFormat);
    const int colours = settings.value(coloursKey).toInt();
    LooksChoice choice;
    if (colours > 0 && colours <= static_cast<int>(ColourChoice::light)) {
        choice.colours = static_cast<ColourChoice>(colours);
    }
    const int points = settings.value(pointsKey, standardPoints).toInt();
    choice.points = std::clamp(points, smallestPoints, largestPoints);
    return choice;
}

void keepLooks(const QString& iniPath, const LooksChoice& choice) {
    QSettings settings(iniPath, QSettings::IniFormat);
    settings.setValue(coloursKey, static_cast<int>(choice.colours));
    settings.setValue(pointsKey, choice.points);
}

void applyLooks(QApplication& application, const LooksChoice& choice,
                std::optional<Sheet> desktop) {
    const Sheet sheet = sheetOf(choice.colours, desktop);
    const bool isApplied = !application.styleSheet().isEmpty() && sheet == shown &&
                           QApplication::font().pointSize() == choice.points;
    if (isApplied) {
        return;
    }
    shown = sheet;
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(paletteOf(shown));
    QApplication::setFont(fontOf(choice.points));
    application.setStyleSheet(styleSheetOf(shown, choice.points - 1));
    QApplication::setWindowIcon(programIcon());
}

Sheet shownSheet() {
    return shown;
}

QIcon programIcon() {
    return QIcon(u":/looks/pet.png"_s);
}

QIcon searchIcon() {
    return QIcon(u":/looks/search.png"_s);
}

QIcon updateIcon() {
    return QIcon(u":/looks/update.png"_s);
}

}  // namespace guanchao
