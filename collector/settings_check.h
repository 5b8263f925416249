// What is amiss in a caijiqi.ini as a user has typed it: an entry that nothing reads would change
// nothing without a word.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace guanchao {

// The names that are read, by section.
using KnownEntries = QHash<QString, QStringList>;

// In Chinese, each with its line; without any the file is well.
QStringList complaintsOf(const QByteArray& file, const KnownEntries& known);

}  // namespace guanchao
