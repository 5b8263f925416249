#include "grid/cell_delegate.h"

#include "base/contrast.h"
#include "frame/looks.h"
#include "grid/amounts.h"
#include "grid/column_widths.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QColor toColor(Colour colour) {
    return QColor::fromRgb(colour);
}

Colour toColour(const QColor& colour) {
    return colour.rgb() & 0xFFFFFF;
}

struct SheetColours {
    explicit SheetColours(Sheet sheet)
        : table(toColour(colourOf(sheet, u"table"_s))),
          marked(toColour(colourOf(sheet, u"marked"_s))),
          beside(toColour(colourOf(sheet, u"hovered"_s))),
          cell(toColour(colourOf(sheet, u"cell"_s))) {}

    Colour table;
    Colour marked;
    Colour beside;  // of rows that are selected beside the marked one
    Colour cell;    // of words without a colour of their own
};

const SheetColours& sheetColours() {
    static const SheetColours dark(Sheet::dark);
    static const SheetColours light(Sheet::light);
    return shownSheet() == Sheet::dark ? dark : light;
}

}  // namespace

// The grids tell colours for a dark ground.
void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto& grid = static_cast<const ResultGrid&>(*index.model());
    const int row = index.row() + 1;
    option->text = shortAmount(grid, row, index.column()).value_or(withoutMidnight(option->text));
    option->font = fontOf(grid, index.column(), option->font);
    const QVariant own = index.data(ResultGrid::ColourRole);
    const QVariant ownGround = index.data(ResultGrid::BackColourRole);
    Colour words = own.isValid() ? own.toUInt() : sheetColours().cell;
    Colour selectedWords = words;
    Colour ground = sheetColours().table;
    if (ownGround.isValid()) {
        // A selected row shows that, and the colour moves from the ground into the text.
        ground = ownGround.toUInt();
        option->backgroundBrush = toColor(ground);
        words = !own.isValid() && isLight(ground) ? darkTextColour : words;
        selectedWords = ground;
    }
    const bool isMarked = row == grid.markedRow();
    const Colour selected = isMarked ? sheetColours().marked : sheetColours().beside;
    option->palette.setColor(QPalette::Highlight, toColor(selected));
    option->palette.setColor(QPalette::Text, toColor(readable(words, ground)));
    option->palette.setColor(QPalette::HighlightedText, toColor(readable(selectedWords, selected)));
}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    editor->setAccessibleName(
        index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    return editor;
}

Colour CellDelegate::readable(Colour colour, Colour ground) const {
    const quint64 pair = quint64{colour} << 32 | ground;
    const auto known = readable_.constFind(pair);
    return known != readable_.cend() ? *known : *readable_.insert(pair, readableOn(colour, ground));
}

}  // namespace guanchao
