// The tray icon of the desktop.
#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>

#include "platform/tray.h"

namespace guanchao {

class DesktopTray : public Tray {
public:
    explicit DesktopTray(const QIcon& icon);

    // The menu of the right button and what a left click does; before the icon is added.
    void attach(QMenu* menu, std::function<void()> leftClick);

    bool available() const override;
    void add() override;
    void setTip(const QString& tip) override;
    void remove() override;

private:
    QSystemTrayIcon icon_;
};

}  // namespace guanchao
