// How windows are opened: not modal, and in place of an open one of that name unless several may
// stand side by side.
#pragma once

#include "frame/environment.h"
#include "frame/open_windows.h"

namespace guanchao {

class Windows {
public:
    explicit Windows(Environment& environment) : environment_(environment) {}

    template <typename Form>
    void openAnew() {
        environment_.openWindows.close<Form>();
        openAnother<Form>();
    }

    // The same without the keyboard, for a window that comes up by itself.
    template <typename Form>
    void openQuietly() {
        environment_.openWindows.close<Form>();
        auto* form = new Form(environment_, *this);
        form->setAttribute(Qt::WA_ShowWithoutActivating);
        environment_.openWindows.adopt(form);
    }

    // Leaves the open ones of the name as they are.
    template <typename Form>
    void openAnother() {
        environment_.openWindows.adopt(new Form(environment_, *this));
    }

private:
    Environment& environment_;
};

}  // namespace guanchao
