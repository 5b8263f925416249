// The window under test in its environment, and its controls by their names.
#pragma once

#include <QLabel>
#include <QPointer>

#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"

namespace guanchao {

class WindowTest : public ::testing::Test, protected TestEnvironment {
protected:
    template <typename Form>
    Form* open() {
        windows_.openAnew<Form>();
        auto* form = shownWindow<Form>();
        form_ = form;
        return form;
    }

    template <typename Widget>
    Widget* find(const QString& name) const {
        return child<Widget>(form_, name);
    }
    QPushButton* button(const QString& name) const { return find<QPushButton>(name); }
    // What its handler throws comes out.
    void click(const QString& name) const { button(name)->click(); }
    void trigger(const QString& entry) const { find<QAction>(entry)->trigger(); }
    QLineEdit* edit(const QString& name) const { return find<QLineEdit>(name); }
    QString text(const QString& name) const { return edit(name)->text(); }
    QString label(const QString& name) const { return find<QLabel>(name)->text(); }
    GridView& view(const QString& name = QStringLiteral("MSHFlexGrid1")) const {
        return *find<GridView>(name);
    }
    ResultGrid& grid(const QString& name = QStringLiteral("MSHFlexGrid1")) const {
        return gridOf(view(name));
    }
    // The words of the popup that is open, which then closes; those that can't be chosen are empty.
    static QStringList popup() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QStringList words;
        for (const QAction* action : menu ? menu->actions() : QList<QAction*>()) {
            words << (action->isEnabled() ? action->text() : QString());
        }
        return menu && menu->close() ? words : QStringList();
    }

    QPointer<QWidget> form_;
};

}  // namespace guanchao
