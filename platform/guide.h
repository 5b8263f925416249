// The user's guide, a page that the system's browser shows.
#pragma once

#include "platform/dialogs.h"
#include "platform/shell.h"

namespace guanchao {

inline const QString guidePage = QStringLiteral("软件使用说明.html");

// 帮助: the user's guide, a page in the application folder, which ends in a separator; says so if
// it is missing. `section` names a place in it, "form24"; its beginning without one.
void openGuide(const QString& folder, const QString& section, Dialogs& dialogs, Shell& shell);

// The system has no program for what was to be opened.
void tellNotOpened(const QString& target, Dialogs& dialogs);

}  // namespace guanchao
