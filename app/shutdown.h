// What happens when the main window is to close: the question, the way into the tray, and the end
// of the program.
#pragma once

#include <QString>
#include <functional>

#include "platform/dialogs.h"
#include "platform/processes.h"
#include "store/stores.h"
#include "utilities/tray_module.h"

namespace guanchao {

// What a request to close the main window leads to.
enum class CloseAnswer { shutDown, hideInTray };

// Asks, unless the exit entry of the tray menu has set `tuichubiaozhi` to 1.
CloseAnswer answerClose(int tuichubiaozhi, Dialogs& dialogs);

// The image name that the shutdown ends: the executable's name less a final "2", and ".exe".
QString imageNameToEnd(const QString& executableName);

// Tells the collector, closes the other windows, removes the tray icon, ends the image by name. A
// heat store that can't be written doesn't keep the program from ending: the failure goes to
// `report`.
void shutDown(const Stores& stores, const QString& executableName, TrayModule& tray,
              Processes& processes, const std::function<void()>& closeOtherWindows,
              const std::function<void(const std::exception&)>& report);

}  // namespace guanchao
