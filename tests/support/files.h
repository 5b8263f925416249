// Whole files, as tests write and read them.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <limits>

#include "tests/support/qt_printers.h"

namespace guanchao {

// Its folder comes too.
inline void writeFile(const QString& path, const QByteArray& content = {}) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size())
        << path.toStdString();
}

// Nothing of one that isn't there.
inline QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// That many bytes of the file, or all behind, become others.
inline void spoil(const QString& path, qint64 from,
                  qint64 bytes = std::numeric_limits<int>::max()) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(from)) << path.toStdString();
    file.write(QByteArray(qMin(bytes, file.size() - from), 'x'));
}

}  // namespace guanchao
