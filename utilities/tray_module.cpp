#include "utilities/tray_module.h"

#include "platform/ini_file.h"

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

void TrayModule::remove() {
    IniFile ini(globals_.yingyongmulu + u"read.ini"_s);
    ini.setValue(u"read"_s, u"jintuopan"_s, u"0"_s);
    tray_.remove();
}

}  // namespace guanchao
