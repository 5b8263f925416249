#include "grid/column_choice.h"

#include <QHeaderView>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString entryWords(const ResultGrid& grid, int col) {
    QString header = shortened(grid.textMatrix(0, col), longestShownName);
    return header.isEmpty() ? u"第 "_s + QString::number(col + 1) + u" 列"_s
                            : header.replace(u'&', u"&&"_s);
}

QSet<QString> headersOf(const ResultGrid& grid, const QList<int>& cols) {
    QSet<QString> headers;
    for (const int col : cols) {
        headers << grid.textMatrix(0, col);
    }
    return headers;
}

QSet<QString> headersBeside(const ResultGrid& grid, const QList<int>& cols) {
    QSet<QString> headers;
    for (int col = 0; col < grid.cols(); ++col) {
        if (!cols.contains(col)) {
            headers << grid.textMatrix(0, col);
        }
    }
    return headers;
}

}  // namespace

void ColumnChoice::apply(const ResultGrid& grid) {
    QList<bool> hidden;
    for (int col = 0; col < grid.cols(); ++col) {
        hidden << hidden_.contains(grid.textMatrix(0, col));
    }
    const bool all = !hidden.contains(false);
    for (int col = 0; col < grid.cols(); ++col) {
        view_.setColumnHidden(col, hidden[col] && !all);
    }
}

QList<int> ColumnChoice::shown(const ResultGrid& grid) const {
    const QHeaderView& header = *view_.horizontalHeader();
    QList<int> cols;
    for (int place = 0; place < grid.cols(); ++place) {
        const int col = header.logicalIndex(place);
        if (!header.isSectionHidden(col)) {
            cols << col;
        }
    }
    return cols;
}

void ColumnChoice::fillMenu(QMenu& menu, const ResultGrid& grid,
                            const std::function<void()>& changed) {
    const QList<int> shownNow = shown(grid);
    for (int col = 0; col < grid.cols(); ++col) {
        QAction* entry = menu.addAction(entryWords(grid, col));
        entry->setCheckable(true);
        entry->setChecked(shownNow.contains(col));
        entry->setEnabled(shownNow != QList<int>{col});
        QList<int> cols = shownNow;
        if (cols.removeAll(col) == 0) {
            cols << col;
        }
        QObject::connect(
            entry, &QAction::toggled, &view_,
            [this, hidden = headersBeside(grid, cols), cols = headersOf(grid, cols), changed] {
                hidden_.subtract(cols).unite(hidden);
                changed();
            });
    }
    menu.addSeparator();
    QAction* all = menu.addAction(u"全部显示"_s);
    all->setEnabled(shownNow.size() < grid.cols());
    QObject::connect(all, &QAction::triggered, &view_, [this, changed] {
        hidden_.clear();
        changed();
    });
}

QStringList ColumnChoice::kept() const {
    QStringList hidden(hidden_.begin(), hidden_.end());
    hidden.sort();
    return hidden;
}

}  // namespace guanchao
