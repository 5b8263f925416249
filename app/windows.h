// The one way in which a window is opened: an open one of that name is closed first, the new one is
// shown and not modal. Closed windows delete themselves.
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "app/environment.h"

namespace guanchao {

class Windows {
public:
    explicit Windows(Environment& environment) : environment_(environment) {}

    template <typename Form>
    void openAnew() {
        const QString name = QString::fromLatin1(Form::staticMetaObject.className());
        close(name);
        adopt(name, new Form(environment_, *this));
    }

    // Nothing happens if no window of the class name is open.
    void close(const QString& name);

    // Every window that was opened here; the main window is not among them.
    void closeAll();

private:
    void adopt(const QString& name, QWidget* window);

    Environment& environment_;
    QHash<QString, QPointer<QWidget>> open_;
};

}  // namespace guanchao
