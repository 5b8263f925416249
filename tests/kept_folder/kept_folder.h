// The application folders in tests/kept_folder, as the programs of former days made and filled
// them.
#pragma once

#include <QStringList>

namespace guanchao {

// By their versions, the oldest first.
QStringList keptFolders();

// Puts a copy of the folder's files into `folder`, in the place of those that are there.
void copyKeptFolder(const QString& version, const QString& folder);

// What was written down of a store when the folder was kept: of each table a line with its name and
// columns, then a line a row; an empty line ends the table.
QString keptRows(const QString& version, const QString& store);

}  // namespace guanchao
