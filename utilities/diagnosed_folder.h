// What the diagnosis tells of this computer, of the application folder and of the stores.
#pragma once

#include "utilities/diagnosis.h"

namespace guanchao {

// Versions of the program, its libraries and the system.
QStringList systemLines();

// Of the program's own files with their sizes and times; others are only counted, since their
// names are the user's.
QStringList folderLines(const QString& path);

// Whether each store is sound, and the rows of its tables.
QStringList storeLines(const DiagnosedFolder& folder, const std::stop_token& stop,
                       Work<RunProgress>& work);

}  // namespace guanchao
