// What views and assistive tools are told of the table, and what the user writes into it.
#include "base/values.h"
#include "grid/amounts.h"
#include "grid/result_grid.h"

namespace guanchao {

// A sign is passed over by some screen readers.
QString ResultGrid::spokenText(int row, int col) const {
    const Cell& it = cell(row, col);
    const QString text = textMatrix(row, col);
    return it.isLowerBound && text.startsWith(u'≥') ? QStringLiteral("至少 ") + text.sliced(1)
                                                    : text;
}

QString ResultGrid::itemNote(int row, int col) const {
    return !itemNotes_.isEmpty() && col == keyColumns_.value(0)
               ? itemNotes_.value(textMatrix(row, col))
               : QString();
}

QVariant ResultGrid::toolTip(int row, int col) const {
    if (shortAmount(*this, row, col)) {
        return textMatrix(row, col);
    }
    const QString note = itemNote(row, col);
    return note.isEmpty() ? QVariant() : QVariant(note);
}

int ResultGrid::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_ - 1;
}

int ResultGrid::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols_;
}

QVariant ResultGrid::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const int row = index.row() + 1;
    const Cell& it = cell(row, index.column());
    switch (role) {
        case Qt::DisplayRole:
            return shortened(textMatrix(row, index.column()), longestShownName);
        case Qt::EditRole:
            return index.column() == editableColumn_ ? textMatrix(row, index.column()) : QVariant();
        case Qt::AccessibleTextRole:
            return shortened(spokenText(row, index.column()), longestShownName);
        case Qt::TextAlignmentRole:
            if (it.alignment == CellAlignment::centre) {
                return QVariant(Qt::AlignCenter);
            }
            return QVariant(Qt::AlignVCenter |
                            (it.alignment == CellAlignment::right || number(row, index.column())
                                 ? Qt::AlignRight
                                 : Qt::AlignLeft));
        case Qt::ToolTipRole:
            return toolTip(row, index.column());
        case Qt::AccessibleDescriptionRole:
            return itemNote(row, index.column());
        case ColourRole:
            return it.coloured ? QVariant(Colour(it.colour)) : QVariant();
        case BackColourRole:
            return it.backColoured ? QVariant(Colour(it.backColour)) : QVariant();
        default:
            return {};
    }
}

QVariant ResultGrid::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= cols_) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return shortened(textMatrix(0, section), longestShownName);
    }
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignCenter) : QVariant();
}

Qt::ItemFlags ResultGrid::flags(const QModelIndex& index) const {
    const Qt::ItemFlags shown = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == editableColumn_ ? shown | Qt::ItemIsEditable
                                                                : shown;
}

bool ResultGrid::setData(const QModelIndex& index, const QVariant& value, int role) {
    const bool isAnother = role == Qt::EditRole && index.isValid() &&
                           value.toString() != textMatrix(index.row() + 1, index.column());
    if (isAnother) {
        emit written(index.row() + 1, index.column(), value.toString());
    }
    return isAnother;
}

}  // namespace guanchao
