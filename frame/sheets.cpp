#include "frame/sheets.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "base/contrast.h"

static void loadLooksResource() {
    Q_INIT_RESOURCE(looks);
}

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct NamedColour {
    QStringView name;
    QRgb dark;
    QRgb light;
};

constexpr NamedColour colours[] = {
    {u"text", 0xFFE0E2E6, 0xFF1B1E23},
    {u"words", 0xFFD6D8DC, 0xFF1B1E23},  // on the ground of a window
    {u"faint", 0xFF9A9EA6, 0xFF5F646D},  // what can't be used now
    {u"hint", 0xFF8A8E96, 0xFF666B74},   // what stands in an empty field
    {u"good", 0xFF52FF52, 0xFF0A6B1E},
    {u"link", 0xFF6FB3F2, 0xFF1F5C99},
    {u"rise", 0xFFFF5252, 0xFFC4161C},  // of the market: red
    {u"fall", 0xFF52FF52, 0xFF0A6B1E},

    {u"ground", 0xFF1E2024, 0xFFF3F4F6},
    {u"bar", 0xFF26292E, 0xFFE9EBEE},
    {u"field", 0xFF141518, 0xFFFFFFFF},
    {u"offField", 0xFF24272B, 0xFFEBEDF0},
    {u"border", 0xFF44484F, 0xFFB9BEC6},
    {u"offBorder", 0xFF34383E, 0xFFD3D7DD},
    {u"line", 0xFF3A3E45, 0xFFC9CDD4},
    {u"accent", 0xFF4F8CC9, 0xFF2F6DA8},
    {u"bright", 0xFF6FB3F2, 0xFF2F6DA8},
    {u"mark", 0xFF6A7079, 0xFF8A919C},

    {u"button", 0xFF30343A, 0xFFFFFFFF},
    {u"buttonBorder", 0xFF4A4F57, 0xFFB4BAC3},
    {u"buttonHover", 0xFF3A4048, 0xFFEAF1F9},
    {u"buttonHoverBorder", 0xFF5D646E, 0xFF8D96A3},
    {u"selected", 0xFF34506E, 0xFFCFE0F2},
    {u"choice", 0xFF264F78, 0xFF2F6DA8},
    {u"choiceText", 0xFFFFFFFF, 0xFFFFFFFF},
    {u"hovered", 0xFF20303F, 0xFFE6EFF8},
    {u"done", 0xFF2A6299, 0xFF9CC4EA},
    {u"ticked", 0xFF2A6299, 0xFF2F6DA8},
    {u"offTicked", 0xFF4A4F57, 0xFFB4BAC3},

    {u"cell", 0xFFC0C0C0, 0xFF1B1E23},
    {u"table", 0xFF000000, 0xFFFFFFFF},
    {u"otherRow", 0xFF1A1C20, 0xFFF6F7F9},
    {u"gridLine", 0xFF22252A, 0xFFE3E5E9},
    {u"marked", 0xFF1F3A57, 0xFFCFE0F2},
    {u"headerGround", 0xFF0B0C0E, 0xFFE4E7EB},
    {u"header", 0xFF15171B, 0xFFEEF0F3},
    {u"headerHover", 0xFF20242A, 0xFFE2E7ED},
    {u"headerLine", 0xFF2A2D33, 0xFFD6DAE0},
    {u"headerText", 0xFF52FFFF, 0xFF0B5560},

    {u"practice", 0xFF6B4E00, 0xFFFFE3A3},
    {u"practiceText", 0xFFFFE9B0, 0xFF4A3500},
    {u"tipText", 0xFFE0E2E6, 0xFF1B1E23},
    {u"handle", 0xFF3D424A, 0xFFC3C8D0},
    {u"handleHover", 0xFF545B66, 0xFFA3AAB5},
};

}  // namespace

QColor colourOf(Sheet sheet, const QString& name) {
    const auto* found = std::find_if(std::begin(colours), std::end(colours),
                                     [&](const NamedColour& it) { return it.name == name; });
    if (found == std::end(colours)) {
        throw std::out_of_range("no such colour: " + name.toStdString());
    }
    return QColor::fromRgb(sheet == Sheet::dark ? found->dark : found->light);
}

QColor readableColour(const QColor& colour, const QColor& ground) {
    return QColor::fromRgb(readableOn(colour.rgb() & 0xFFFFFF, ground.rgb() & 0xFFFFFF));
}

QString styleSheetOf(Sheet sheet, int tablePoints) {
    loadLooksResource();
    QFile file(u":/looks/sheet.qss"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QString text = QString::fromUtf8(file.readAll());
    text.replace(u"@tablePoints"_s, QString::number(tablePoints) + u"pt"_s);
    static const QRegularExpression name(u"@(\\w+)"_s);
    QString shown;
    qsizetype end = 0;
    for (const QRegularExpressionMatch& match : name.globalMatch(text)) {
        shown += text.sliced(end, match.capturedStart() - end);
        shown += colourOf(sheet, match.captured(1)).name();
        end = match.capturedEnd();
    }
    return shown + text.sliced(end);
}

}  // namespace guanchao
