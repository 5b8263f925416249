// Whole files, as tests write and read them.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

}  // namespace guanchao
