// A view with a grid of three rows under real keys and a real mouse.
#pragma once

#include <QContextMenuEvent>
#include <QMenu>
#include <vector>

#include "grid/grid_view.h"
#include "tests/support/grid_texts.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_windows.h"

namespace guanchao {

class GridViewTest : public ::testing::Test {
protected:
    GridViewTest() {
        view_.setGrid(grid_);
        view_.resize(500, 300);
        fill({u"乙"_s, u"甲"_s, u"丙"_s});
        view_.show();
        view_.setFocus();
        QObject::connect(&view_, &GridView::rowChosen, [this](int row) { told_.push_back(row); });
    }

    void fill(const QStringList& names) {
        const GridFill fill(grid_);
        grid_.clear();
        grid_.setCols(4);
        grid_.setRows(static_cast<int>(names.size()) + 1);
        grid_.setTextMatrix(0, 1, u"名称"_s);
        grid_.setTextMatrix(0, 2, u"涨幅"_s);
        grid_.setTextMatrix(0, 3, u"日期"_s);
        for (int row = 1; row < grid_.rows(); ++row) {
            grid_.setInteger(row, 0, row);
            grid_.setTextMatrix(row, 1, names[row - 1]);
            grid_.setReal(row, 2, row * 1.5);
        }
    }

    // Draws the right edge of the column.
    void drawColumn(int col, int by) {
        auto* header = view_.horizontalHeader();
        const QPoint edge(header->sectionViewportPosition(col) + header->sectionSize(col) - 1,
                          header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseMove(header->viewport(), edge + QPoint(by, 0));
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(by, 0));
    }

    void pressMenuKey() {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(view_.viewport(), &event);
    }

    // The words of the menu that is open, ticked ones behind a +, those that can't be chosen in
    // brackets, with the key that it tells.
    static QString menuWords() {
        QStringList words;
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        for (const QAction* it : menu ? menu->actions() : QList<QAction*>()) {
            const QString text = it->isSeparator() ? u"-"_s : it->text();
            const QString ticked = it->isChecked() ? u"+"_s + text : text;
            const QString keys = it->shortcut().toString();
            const QString told = keys.isEmpty() ? ticked : ticked + u' ' + keys;
            if (it->isVisible()) {
                words << (it->isEnabled() ? told : u'(' + told + u')');
            }
        }
        return words.join(u'|');
    }

    // By a click on its entry.
    static void chooseInMenu(const QString& words) {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* it : menu->actions()) {
            if (it->text() == words) {
                menu->setActiveAction(it);
                QTest::keyClick(menu, Qt::Key_Return);
                QApplication::processEvents();
                return;
            }
        }
        FAIL() << words.toStdString();
    }

    void openHeaderMenu() {
        QWidget* header = view_.horizontalHeader()->viewport();
        const QPoint place(5, 5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, header->mapToGlobal(place));
        QApplication::sendEvent(header, &event);
    }

    QString shownColumns() const {
        QStringList shown;
        for (int col = 0; col < 4; ++col) {
            shown << (view_.isColumnHidden(col) ? QString() : QString::number(col));
        }
        return shown.join(QString());
    }

    static bool closeMenu() {
        QWidget* menu = QApplication::activePopupWidget();
        return menu && menu->close();
    }

    // The column of the arrow, and + where it points up, for an ascending order.
    static QString arrow(const GridView& view) {
        const QHeaderView& header = *view.horizontalHeader();
        return header.isSortIndicatorShown() && header.sortIndicatorSection() >= 0
                   ? QString::number(header.sortIndicatorSection()) +
                         (header.sortIndicatorOrder() == Qt::DescendingOrder ? u'+' : u'-')
                   : QString();
    }

    QList<int> selectedRows() const {
        QList<int> rows;
        for (const QModelIndex& it : view_.selectionModel()->selectedRows()) {
            rows << it.row() + 1;
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    // 0 unless it is one.
    int selectedRow() const { return selectedRows().size() == 1 ? selectedRows().first() : 0; }

    QString markedName() { return grid_.textMatrix(grid_.markedRow(), 1); }

    ResultGrid grid_;
    GridView view_;
    QMenu menu_;
    std::vector<int> told_;
};

}  // namespace guanchao
