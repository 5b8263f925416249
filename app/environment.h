// What every window is given: the values that windows share and the services of the platform. Main
// makes it and outlives all windows.
#pragma once

#include "base/event_pump.h"
#include "base/globals.h"
#include "market/mean_volume.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/http.h"
#include "platform/processes.h"
#include "platform/services.h"
#include "platform/shell.h"
#include "platform/sound.h"
#include "research/asked_history.h"
#include "store/stores.h"
#include "utilities/shell_link.h"
#include "utilities/tray_module.h"

namespace guanchao {

struct Environment {
    Globals& globals;
    Stores& stores;
    const Services& services;
    const Clock& clock;
    Dialogs& dialogs;
    EventPump& pump;
    Http& http;
    YieldingHttp yieldingHttp;  // for a request that shall not hold its window
    Shell& shell;
    Sound& sound;
    Clipboard& clipboard;
    Processes& processes;
    TrayModule& tray;
    AskedHistory& askedHistory;
    MeanVolume& meanVolume;
    QString applicationFolder;  // made ready before the load; ends in one separator
    QString executableName;     // without its folder
    LauncherFolders launcherFolders;
};

}  // namespace guanchao
