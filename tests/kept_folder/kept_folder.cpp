#include "tests/kept_folder/kept_folder.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <algorithm>
#include <stdexcept>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

static const QString place = QStringLiteral(GUANCHAO_SOURCE_DIR "/tests/kept_folder/");

QStringList keptFolders() {
    QStringList versions = QDir(place).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCollator byNumbers;
    byNumbers.setNumericMode(true);
    std::ranges::sort(versions, byNumbers);
    return versions;
}

void copyKeptFolder(const QString& version, const QString& folder) {
    const QString source = place + version + u"/application/"_s;
    QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file = files.nextFileInfo();
        const QString target = folder + u'/' + file.filePath().mid(source.size());
        QDir().mkpath(QFileInfo(target).path());
        QFile::remove(target);
        if (!QFile::copy(file.filePath(), target)) {
            throw std::runtime_error("can't write " + target.toStdString());
        }
        // The tree may be read-only.
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    }
}

QString keptRows(const QString& version, const QString& store) {
    QFile file(place + version + u"/rows/"_s + store + u".txt"_s);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace guanchao
