#include "platform/guide.h"

#include <QFile>
#include <QFileInfo>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString leadingPage = u"帮助.html"_s;

// Some openers drop what stands behind the "#" of a file: a page of our own leads on to it. Where
// it can't be written, the guide opens at its beginning.
QString leaderTo(const QString& section, const QString& page, const QString& folder) {
    const QString leader = folder + leadingPage;
    const QString content =
        u"<!DOCTYPE html>\n<meta charset=\"utf-8\">\n"
        u"<meta http-equiv=\"refresh\" content=\"0; url=%1#%2\">\n"_s.arg(
            QFileInfo(page).fileName(), section);
    return tryToReplaceFile(leader, content.toUtf8()) ? leader : page;
}

}  // namespace

void openGuide(const QString& folder, const QString& section, Dialogs& dialogs, Shell& shell) {
    const QString page = folder + guidePage;
    if (!QFile::exists(page)) {
        dialogs.tell(u"没有找到软件使用说明，请检查文件是否存在：\n"_s + page);
        return;
    }
    shell.open(section.isEmpty() ? page : leaderTo(section, page, folder));
}

void tellNotOpened(const QString& target, Dialogs& dialogs) {
    // The leading page is none that a user knows.
    const bool isLeader = target.endsWith(u'/' + leadingPage);
    const QString shown = isLeader ? target.chopped(leadingPage.size()) + guidePage : target;
    dialogs.tell(u"没有能打开它的程序，请自己打开：\n"_s + shown);
}

}  // namespace guanchao
