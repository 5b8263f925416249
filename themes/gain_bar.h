// A cell that shows its number as a bar from the middle: to the right above 0, to the left below,
// the longer the nearer it is to the column's greatest. The number is still its text for assistive
// tools, copies and exports.
#pragma once

#include "grid/cell_delegate.h"

namespace guanchao {

class GainBar : public CellDelegate {
public:
    using CellDelegate::CellDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace guanchao
