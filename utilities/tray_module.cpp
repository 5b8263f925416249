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

bool TrayModule::hide() {
    if (!tray_.available()) {
        return false;
    }
    hidden_ = 1;
    return true;
}

void TrayModule::remove() {
    IniFile ini(globals_.yingyongmulu + u"read.ini"_s);
    ini.setValue(u"read"_s, u"jintuopan"_s, u"0"_s);
    tray_.remove();
}

}  // namespace guanchao
