// Files that take the place of others. The new one is written beside the old one and brought to the
// disk before it is moved there, so that the old one stays whole until the new one is.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include "base/activity.h"

namespace guanchao {

// Why the system refused, by its error number, in words for the user.
QString systemReason(int error);

// The one of these words that a text holds; empty if it holds none.
QString systemReasonIn(const QString& text);

// Why a file couldn't be opened, or didn't take what was written to it.
QString reasonOf(const QFileDevice& file);

// What the functions below raise, for others that write files to raise too.
OperationError notWritten(const QString& path, const QString& reason);

// All of a file. Raises OperationError.
QByteArray contentOfFile(const QString& path);

// `added` are permissions beyond those that the file has, or that a new file gets. Raises
// OperationError.
void replaceFile(const QString& target, const QByteArray& content, QFile::Permissions added = {});

// The same for what can be done without; false if it isn't written.
bool tryToReplaceFile(const QString& target, const QByteArray& content,
                      QFile::Permissions added = {});

// With the folders above it; one that is there is left as it is. Raises OperationError.
void makeFolder(const QString& path);

// To where no folder is. Raises OperationError.
void moveFolder(const QString& from, const QString& to);

// A file in the making, for writers that want a path. It goes unless it has taken its place.
class FreshFile {
public:
    // What a killed run has left at the path goes first.
    explicit FreshFile(const QString& target);
    ~FreshFile();
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    const QString& path() const { return path_; }

    // Over the file that is there, or only where none is. Both raise OperationError.
    void takePlace();
    void takeFreePlace();

private:
    QString target_;
    QString path_;
};

}  // namespace guanchao
