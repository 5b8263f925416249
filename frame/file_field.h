// A field that holds the path of a file.
#pragma once

#include <QLineEdit>

#include "platform/dialogs.h"

namespace guanchao {

// Puts the file that the user picks into the field; says so, and leaves it, if none is picked. The
// field outlives the run.
QCoro::Task<> pickFileInto(QLineEdit& field, Dialogs& dialogs, QString title, QString file,
                           std::stop_token stop);

}  // namespace guanchao
