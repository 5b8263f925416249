// The tray icon's state: added at start, hidden windows told apart from shown ones, and its mark in
// read.ini taken away at the end.
#pragma once

#include <QString>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "platform/tray.h"

namespace guanchao {

class TrayModule {
public:
    TrayModule(Tray& tray, const Globals& globals);

    void add(const QString& tip);
    void setTip(const QString& tip);

    // 进托盘: notes that the main window is hidden; false where the desktop has no tray, since the
    // window could not be brought back. The first time it says so.
    bool hide(Dialogs& dialogs);
    // Back to the state of a shown main window.
    void show() { hidden_ = 0; }
    int hidden() const { return hidden_; }
    // Asked every second: true when the tray of a hidden window has gone, so that the window has to
    // come back by itself.
    bool lost();

    // Writes jintuopan=0 into section read of read.ini and deletes the icon.
    void remove();

private:
    Tray& tray_;
    const Globals& globals_;
    int hidden_ = 0;
    bool toldNoTray_ = false;
    int secondsWithoutTray_ = 0;
};

}  // namespace guanchao
