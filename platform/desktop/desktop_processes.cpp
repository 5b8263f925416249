#include "platform/desktop/desktop_processes.h"

#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <vector>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The user's processes whose executable has that name.
std::vector<pid_t> processesOf(const QString& executable) {
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
        if (QFileInfo(image).fileName() == executable) {
            found.push_back(id);
        }
    }
    return found;
}

}  // namespace

void DesktopProcesses::endByImageName(const QString& imageName) {
    QString executable = imageName;
    if (executable.endsWith(u".exe"_s, Qt::CaseInsensitive)) {
        executable.chop(4);
    }
    for (const pid_t id : processesOf(executable)) {
        // This process is on its way out anyhow: it leaves its event loop and ends in order.
        if (id == getpid()) {
            QCoreApplication::exit(0);
        } else {
            kill(id, SIGTERM);
        }
    }
}

}  // namespace guanchao
