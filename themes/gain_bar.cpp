#include "themes/gain_bar.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

constexpr int margin = 3;

double greatestIn(const ResultGrid& grid, int col) {
    double greatest = 0;
    for (int row = 1; row < grid.rows(); ++row) {
        greatest = std::max(greatest, std::abs(grid.number(row, col).value_or(0)));
    }
    return greatest;
}

}  // namespace

void GainBar::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    CellDelegate::initStyleOption(option, index);
    option->text.clear();
}

void GainBar::paint(QPainter* painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const {
    CellDelegate::paint(painter, option, index);
    const auto& grid = static_cast<const ResultGrid&>(*index.model());
    const double gain = grid.number(index.row() + 1, index.column()).value_or(0);
    const double greatest = greatestIn(grid, index.column());
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const bool selected = option.state & QStyle::State_Selected;
    const QColor colour =
        shown.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    const QRect room = option.rect.adjusted(margin, margin, -margin, -margin);
    const int middle = room.center().x();
    if (greatest > 0) {
        const int length = qRound(std::abs(gain) / greatest * room.width() / 2);
        painter->fillRect(
            QRect(gain < 0 ? middle - length : middle, room.top(), length, room.height()), colour);
    }
    painter->fillRect(QRect(middle, option.rect.top(), 1, option.rect.height()),
                      option.palette.color(QPalette::Mid));
}

}  // namespace guanchao
