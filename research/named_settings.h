// What the user keeps under a name of his own in an INI file of the application folder.
#pragma once

#include <QSettings>
#include <QString>

namespace guanchao {

// A name may hold what has a meaning in the keys of the file.
QString keyOfName(const QString& name);
QString nameOfKey(const QString& key);

// Raises OperationError if what was set can't be written.
void requireWritten(QSettings& settings);

}  // namespace guanchao
