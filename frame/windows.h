// How windows are opened: not modal, and in place of an open one of that name unless several may
// stand side by side.
#pragma once

#include <QString>

#include "frame/environment.h"
#include "frame/open_windows.h"

namespace guanchao {

class Windows {
public:
    explicit Windows(Environment& environment) : environment_(environment) {}

    template <typename Form>
    void openAnew() {
        const QString name = QString::fromLatin1(Form::staticMetaObject.className());
        environment_.openWindows.close(name);
        environment_.openWindows.adopt(name, new Form(environment_, *this));
    }

    // The same without the keyboard, for a window that comes up by itself.
    template <typename Form>
    void openQuietly() {
        const QString name = QString::fromLatin1(Form::staticMetaObject.className());
        environment_.openWindows.close(name);
        auto* form = new Form(environment_, *this);
        form->setAttribute(Qt::WA_ShowWithoutActivating);
        environment_.openWindows.adopt(name, form);
    }

    // Leaves the open ones of the name as they are.
    template <typename Form>
    void openAnother() {
        environment_.openWindows.adopt(QString::fromLatin1(Form::staticMetaObject.className()),
                                       new Form(environment_, *this));
    }

private:
    Environment& environment_;
};

}  // namespace guanchao
