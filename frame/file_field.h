// A field that holds the path of a file.
#pragma once

#include <QLineEdit>

#include "platform/dialogs.h"

namespace guanchao {

// Puts the file that the user picks into the field; says so, and leaves it, if none is picked.
void pickFileInto(QLineEdit& field, Dialogs& dialogs, const QString& title, const QString& file);

}  // namespace guanchao
