// How tests find the windows that are on the screen, and what they press there.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <QTreeWidget>
#include <QWidget>

#include "grid/grid_view.h"

namespace guanchao {

// The shown windows of the class. Closed ones are gone for a test, though they may not be deleted
// yet.
template <typename Form>
QList<Form*> shownWindows() {
    QList<Form*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* form = qobject_cast<Form*>(widget); form && form->isVisible()) {
            shown << form;
        }
    }
    return shown;
}

// Null if there is none.
template <typename Form>
Form* shownWindow() {
    return shownWindows<Form>().value(0);
}

inline void press(QWidget* form, const QString& button) {
    QTest::mouseClick(form->findChild<QPushButton*>(button), Qt::LeftButton);
}

inline void trigger(QWidget* form, const QString& entry) {
    form->findChild<QAction*>(entry)->trigger();
    QApplication::processEvents();
}

// The entry of any menu that reads so.
inline void chooseEntry(const QWidget& form, const QString& words) {
    for (QAction* entry : form.findChildren<QAction*>()) {
        if (entry->text() == words) {
            entry->trigger();
        }
    }
}

// What the timer does when its time is up.
inline void timeIsUp(QTimer* timer) {
    ASSERT_TRUE(timer->isActive()) << timer->objectName().toStdString();
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
}

template <typename Widget>
Widget* child(const QWidget* form, const QString& name) {
    auto* widget = form->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
}

inline QLineEdit* lineEdit(QWidget* form, const QString& name) {
    return form->findChild<QLineEdit*>(name);
}

// The cell of a grid, whose rows count from 1, in the view's own pixels.
inline QPoint cellOf(const GridView& view, int row, int col) {
    return view.visualRect(view.model()->index(row - 1, col)).center();
}

inline void clickCell(GridView& view, int row, int col, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(view.viewport(), button, {}, cellOf(view, row, col));
    QApplication::processEvents();
}

inline void clickHeader(const GridView& view, int col) {
    const auto* header = view.horizontalHeader();
    const QPoint section(header->sectionViewportPosition(col) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, section);
}

inline ResultGrid& gridOf(const GridView& view) {
    return *static_cast<ResultGrid*>(view.model());
}

// The rows of a tree, their cells joined by "|"; ticked ones with a star.
inline QStringList rowTexts(const QTreeWidget& tree) {
    QStringList rows;
    for (int at = 0; at < tree.topLevelItemCount(); ++at) {
        const QTreeWidgetItem& item = *tree.topLevelItem(at);
        QStringList cells;
        for (int col = 0; col < tree.columnCount(); ++col) {
            cells << item.text(col);
        }
        const bool ticked = item.checkState(0) == Qt::Checked;
        rows << (ticked ? QStringLiteral("*") : QString()) + cells.join(u'|');
    }
    return rows;
}

// What the event loop under a question or inside a run does with windows that were closed there.
inline void deleteClosedWindows() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace guanchao
