// How windows are opened: not modal, and in place of an open one of that name unless several may
// stand side by side, or the work of the open one must go on.
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

    // The open one comes to the front as it is, with what it is at.
    template <typename Form>
    void raiseOrOpen() {
        if (Form* open = environment_.openWindows.find<Form>()) {
            bringToFront(*open);
        } else {
            openAnother<Form>();
        }
    }

    // As openAnew(), without the keyboard, for a window that comes up by itself.
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
