#include "platform/desktop/desktop_tray.h"

namespace guanchao {

DesktopTray::DesktopTray(const QIcon& icon) {
    icon_.setIcon(icon);
}

void DesktopTray::attach(QMenu* menu, std::function<void()> leftClick) {
    icon_.setContextMenu(menu);
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [click = std::move(leftClick)](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             click();
                         }
                     });
}

bool DesktopTray::available() const {
    return QSystemTrayIcon::isSystemTrayAvailable() && icon_.isVisible();
}

// A desktop that starts its tray after the program gets the icon then.
void DesktopTray::add() {
    icon_.show();
}

void DesktopTray::setTip(const QString& tip) {
    icon_.setToolTip(tip);
}

void DesktopTray::remove() {
    icon_.hide();
}

}  // namespace guanchao
