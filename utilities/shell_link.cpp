#include "utilities/shell_link.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A value of a desktop entry stands on one line.
QString value(QString text) {
    text.replace(u'\\', u"\\\\"_s);
    text.replace(u'\n', u"\\n"_s);
    text.replace(u'\r', u"\\r"_s);
    return text.replace(u'\t', u"\\t"_s);
}

// A path as a command line without arguments: quoted, and no % of it opens a field code. The path
// of a program may hold no =, and GLib looks for the program before it undoubles a %: such a path
// is the argument of a starter (`env` would take one with = for a variable).
QString commandLine(QString path) {
    for (const QChar mark : {u'\\', u'"', u'`', u'$'}) {
        path.replace(mark, QString(u'\\') + mark);
    }
    const bool needsStarter = path.contains(u'%') || path.contains(u'=');
    const QString starter = needsStarter ? u"setsid "_s : QString();
    return starter + u'"' + path.replace(u'%', u"%%"_s) + u'"';
}

}  // namespace

LauncherFolders userLauncherFolders() {
    using Paths = QStandardPaths;
    return {Paths::writableLocation(Paths::DesktopLocation),
            Paths::writableLocation(Paths::ApplicationsLocation),
            Paths::writableLocation(Paths::GenericConfigLocation) + u"/autostart"_s};
}

clsShellLink::clsShellLink(LauncherFolders folders, QString program, QString applicationFolder,
                           QString name)
    : folders_(std::move(folders)),
      program_(std::move(program)),
      applicationFolder_(std::move(applicationFolder)),
      name_(std::move(name)) {}

void clsShellLink::createlnk(ShellFolder number) const {
    const QString place = folder(number);
    if (place.isEmpty() || !QDir().mkpath(place)) {
        return;
    }
    // A desktop starts an entry among the user's files only if it is executable.
    tryToReplaceFile(place + u'/' + QFileInfo(program_).fileName() + u".desktop"_s,
                     entry().toUtf8(), QFile::ExeOwner | QFile::ExeUser);
}

QString clsShellLink::folder(ShellFolder number) const {
    switch (number) {
        case ShellFolder::desktop:
            return folders_.desktop;
        case ShellFolder::programs:
        case ShellFolder::startMenu:
            return folders_.programs;
        case ShellFolder::startup:
            return folders_.startup;
    }
    return {};
}

QString clsShellLink::entry() const {
    const QString name = QFileInfo(program_).fileName();
    const QStringList lines = {u"[Desktop Entry]"_s,
                               u"Type=Application"_s,
                               u"Version=1.0"_s,
                               u"Name="_s + value(name),
                               u"Name[zh_CN]="_s + value(name_),
                               u"Comment="_s + value(name + u"的快捷方式"_s),
                               u"TryExec="_s + value(program_),
                               u"Exec="_s + value(commandLine(program_)),
                               u"Path="_s + value(applicationFolder_),
                               u"Icon="_s + value(applicationFolder_ + u"pet.ico"_s),
                               u"Terminal=false"_s,
                               u"Categories=Office;Finance;"_s};
    return lines.join(u'\n') + u'\n';
}

}  // namespace guanchao
