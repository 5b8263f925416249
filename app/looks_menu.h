// 工具 / 外观: dark, light or as the desktop, and the size of the words; holds at once in all
// windows, and is kept in 界面.ini of the application folder.
#pragma once

#include <QMenu>
#include <QObject>

#include "frame/looks.h"
#include "platform/colour_scheme.h"

namespace guanchao {

class LooksMenu : public QObject {
    Q_OBJECT

public:
    // `desktop` outlives it; without one the desktop is taken for a dark one.
    LooksMenu(QMenu& menu, QString iniPath, ColourScheme* desktop);
    ~LooksMenu() override;

private:
    void choose(const LooksChoice& choice);
    void apply();

    QString iniPath_;
    ColourScheme* desktop_;
    LooksChoice choice_;
};

}  // namespace guanchao
