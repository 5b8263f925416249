// The questions for files begin in the folder of exports.
#pragma once

#include <optional>

#include "platform/dialogs.h"

namespace guanchao {

// For a file that exists. Says so, and gives nothing, if the user picks none. `file` is the name
// that the dialog offers.
QCoro::Task<std::optional<QString>> pickFile(Dialogs& dialogs, QString title, QString file,
                                             std::stop_token stop);

// For a file to be written: the user's home where that folder is missing.
QString offeredFolder();

}  // namespace guanchao
