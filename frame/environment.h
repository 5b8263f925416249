// What every window is given: the values that windows share and the services of the platform. Main
// makes it and outlives all windows.
#pragma once

#include "base/globals.h"
#include "base/runs.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/http_client.h"
#include "platform/processes.h"
#include "platform/shell.h"
#include "services/services.h"
#include "store/application_folder.h"
#include "store/edits.h"
#include "store/stores.h"

namespace guanchao {

class AskedHistory;
class HistoryDesk;
class MeanVolume;
class OpenWindows;
class PolledDay;
class ServiceWatch;
class ServicesFile;
class SharedHistory;
class StoredCandles;

struct Environment {
    Globals& globals;
    Stores& stores;
    Removals& removals;
    Edits& edits;
    const Services& services;
    ServicesFile& servicesFile;
    const Clock& clock;
    OpenWindows& openWindows;
    Dialogs& dialogs;
    Failures& failures;
    HttpClient& client;
    ServiceWatch& watch;  // over what `client` asks
    Shell& shell;
    Clipboard& clipboard;
    Processes& processes;
    AskedHistory& askedHistory;
    HistoryDesk& historyDesk;
    MeanVolume& meanVolume;
    PolledDay& polledDay;
    const StoredCandles& storedCandles;
    SharedHistory& sharedHistory;
    QString applicationFolder;  // made ready before the load; ends in one separator
    QString executableName;     // without its folder

    QString interfaceIniPath() const { return applicationFolder + interfaceIni; }
};

}  // namespace guanchao
