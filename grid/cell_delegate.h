// Paints the cells of a result grid.
#pragma once

#include <QHash>
#include <QStyledItemDelegate>

#include "grid/result_grid.h"

namespace guanchao {

// Paints amounts short, and puts the cell's own colour and font under the text, on a selected row
// too. Rows that are selected beside the marked one stand out half as much.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Named as its column.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    Colour readable(Colour colour, Colour ground) const;

    mutable QHash<quint64, Colour> readable_;  // by colour and ground
};

}  // namespace guanchao
