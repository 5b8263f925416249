#include "utilities/version_check.h"

#include "base/files.h"
#include "base/later.h"
#include "base/values.h"
#include "formats/ini_file.h"
#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A page of another kind, as of a portal, doesn't come into the application folder.
constexpr qsizetype largestFile = 65536;

// A value of the version file: at most 127 characters, and none behind a NUL.
QString entry(const IniFile& ini, const QString& key) {
    const QString value = ini.value(u"chaoxin"_s, key).value_or(QString());
    return trimBlanks(value.left(127).section(QChar(0), 0, 0));
}

}  // namespace

double versionInCaption(const QString& caption) {
    QString text = caption;
    text.replace(u'（', u'(').replace(u'）', u')');
    const QString inside = text.section(u')', 0, 0).section(u'(', 1);
    return numericPrefix(QStringView(inside).sliced(inside.isEmpty() ? 0 : 1));
}

// The program may end while the box stands.
QCoro::Task<> VersionCheck::run(QString caption, std::stop_token stop) {
    const QString file = u"/chaoxin/banbenupdate.txt"_s;
    const HttpReply reply = co_await http_.get(vendor_, file, stop);
    const QString path = globals_.yingyongmulu + u"banben.ini"_s;
    if (!reply.answered() || reply.body.size() > largestFile ||
        !tryToReplaceFile(path, bytesOf(readText(reply.body).text))) {
        co_return;
    }
    const IniFile ini(path);
    if (entry(ini, u"banben"_s).isEmpty()) {
        http_.complain(vendor_, u"应答里没有版本"_s);
    }
    if (numericPrefix(entry(ini, u"banben"_s)) > versionInCaption(caption)) {
        dialogs_.tell(u"发现软件有新的版本，请前去下载！"_s);
        endIfStopped(stop);
        shell_.open(entry(ini, u"downurl"_s));
    }
}

}  // namespace guanchao
