#include "utilities/help.h"

#include <QFile>
#include <QFileInfo>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Some openers drop what stands behind the "#" of a file: a page of our own leads on to it. Where
// it can't be written, the guide opens at its beginning.
QString leaderTo(const QString& section, const QString& page, const QString& folder) {
    const QString leader = folder + u"帮助.html"_s;
    const QString content =
        u"<!DOCTYPE html>\n<meta charset=\"utf-8\">\n"
        u"<meta http-equiv=\"refresh\" content=\"0; url=%1#%2\">\n"_s.arg(
            QFileInfo(page).fileName(), section);
    return tryToReplaceFile(leader, content.toUtf8()) ? leader : page;
}

}  // namespace

void openHelp(const Globals& globals, const QString& section, Dialogs& dialogs, Shell& shell) {
    const QString page = globals.yingyongmulu + u"软件使用说明.html"_s;
    if (!QFile::exists(page)) {
        dialogs.tell(u"没有找到软件使用说明，请检查文件是否存在：\n"_s + page);
        return;
    }
    shell.open(section.isEmpty() ? page : leaderTo(section, page, globals.yingyongmulu));
}

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
