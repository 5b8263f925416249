// The question for a file that exists, beginning in the folder of exports.
#pragma once

#include <optional>

#include "platform/dialogs.h"

namespace guanchao {

// Says so, and gives nothing, if the user picks none. `file` is the name that the dialog offers.
QCoro::Task<std::optional<QString>> pickFile(Dialogs& dialogs, QString title, QString file,
                                             std::stop_token stop);

}  // namespace guanchao
