// What is amiss in a caijiqi.ini as a user has typed it: an entry that nothing reads would change
// nothing without a word.
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

// The names that are read, by section.
using KnownEntries = QHash<QString, QStringList>;

// In Chinese, with its line.
struct SettingsComplaint {
    QString words;
    QString forLog;  // the same without what the user has typed
};

// Without any the file is well.
QList<SettingsComplaint> complaintsOf(const QByteArray& file, const KnownEntries& known);

}  // namespace guanchao
