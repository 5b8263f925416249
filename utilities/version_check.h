// The check for a newer version of the program: silent unless there is one.
#pragma once

#include <QString>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "platform/http.h"
#include "platform/shell.h"

namespace guanchao {

// The version in a window caption such as "观潮台(V3.7)", with plain or full-width parentheses; 0
// if there is none.
double versionInCaption(const QString& caption);

// Downloads the version file of the vendor's site into banben.ini of the application folder. If it
// names a higher version than the caption, says so and opens its download page.
void checkVersion(const QString& caption, const Globals& globals, const Service& vendor, Http& http,
                  Dialogs& dialogs, Shell& shell);

}  // namespace guanchao
