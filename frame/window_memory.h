// Where and how large each window was, with the columns and the order of its grids and its
// splitters, from run to run: in 界面.ini of the application folder, by the window's class. A
// window that is opened for the first time stands in the middle of the screen. None is larger than
// the screen: controls for which it has no room are scrolled.
#pragma once

#include <QString>
#include <QWidget>

namespace guanchao {

class WindowMemory {
public:
    // Without a file nothing is kept.
    explicit WindowMemory(QString iniPath = {}) : iniPath_(std::move(iniPath)) {}

    // Before the window is shown: puts it where it was, false if that is not known. What the user
    // makes of it is kept when it is closed or the program ends.
    bool place(QWidget& window) const;

private:
    QString iniPath_;
};

}  // namespace guanchao
