#include "utilities/tray_module.h"

#include "formats/ini_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TrayModule::TrayModule(Tray& tray, const Globals& globals) : tray_(tray), globals_(globals) {}

void TrayModule::add(const QString& tip) {
    tray_.add();
    setTip(tip);
}

void TrayModule::setTip(const QString& tip) {
    tray_.setTip(tip);
}

bool TrayModule::hide(Dialogs& dialogs) {
    if (tray_.available()) {
        hidden_ = 1;
        return true;
    }
    if (!toldNoTray_) {
        toldNoTray_ = true;
        dialogs.tell(u"这个桌面没有托盘，窗口改为最小化，监控照常运行。"_s);
    }
    return false;
}

bool TrayModule::lost() {
    // A panel that restarts is back by then, and the icon in it.
    constexpr int patience = 10;
    const bool gone = hidden_ == 1 && !tray_.available();
    secondsWithoutTray_ = gone ? secondsWithoutTray_ + 1 : 0;
    return secondsWithoutTray_ > patience;
}

void TrayModule::remove() {
    IniFile ini(globals_.yingyongmulu + u"read.ini"_s);
    ini.setValue(u"read"_s, u"jintuopan"_s, u"0"_s);
    tray_.remove();
}

}  // namespace guanchao
