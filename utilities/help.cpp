#include "utilities/help.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void openVendorSite(const Service& vendor, Dialogs& dialogs, Shell& shell) {
    if (vendor.host.isEmpty()) {
        dialogs.tell(
            u"还没有设置软件网站，打不开网页。\n"
            u"请在“工具 / 行情来源”里填写它的网址。"_s);
        return;
    }
    shell.open(vendor.host + u'/');
}

void tellMaker(Dialogs& dialogs) {
    dialogs.tell(u"本软件由观潮台开发组制作。"_s);
}

void tellSetup(Dialogs& dialogs) {
    dialogs.tell(u"软件初始化的作用是注册必要的DLL和控件。"_s);
}

}  // namespace guanchao
