#include "platform/desktop/desktop_processes.h"

#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <vector>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A folder may hold links to programs that are installed elsewhere.
bool liesIn(const QString& folder, const QFileInfo& image) {
    const QFileInfo file(folder + u'/' + image.fileName());
    return image.path() == QFileInfo(folder).canonicalFilePath() ||
           image.filePath() == file.canonicalFilePath();
}

// The user's processes of the image in the folder, letter case aside.
std::vector<pid_t> processesOf(const QString& folder, const QString& imageName) {
    QString executable = imageName;
    if (executable.endsWith(u".exe"_s, Qt::CaseInsensitive)) {
        executable.chop(4);
    }
    std::vector<pid_t> found;
    const QDir processes(u"/proc"_s);
    for (const QFileInfo& entry : processes.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isProcess = false;
        const pid_t id = entry.fileName().toInt(&isProcess);
        if (!isProcess || entry.ownerId() != getuid()) {
            continue;
        }
        QString image = QFile::symLinkTarget(entry.filePath() + u"/exe"_s);
        // An image that has been replaced while it runs carries this mark.
        image.remove(u" (deleted)"_s);
        const QFileInfo file(image);
        if (file.fileName().compare(executable, Qt::CaseInsensitive) == 0 && liesIn(folder, file)) {
            found.push_back(id);
        }
    }
    return found;
}

}  // namespace

void DesktopProcesses::endByImageName(const QString& imageName) {
    for (const pid_t id : processesOf(folder_, imageName)) {
        if (id != getpid()) {
            kill(id, SIGTERM);
        }
    }
}

bool DesktopProcesses::isRunning(const QString& imageName) {
    return !processesOf(folder_, imageName).empty();
}

bool DesktopProcesses::start(const QString& program, const QString& argument) {
    return QProcess::startDetached(program, {argument});
}

void DesktopProcesses::endThisProcess() {
    QCoreApplication::exit(0);
}

}  // namespace guanchao
