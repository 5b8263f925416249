// The launch of the companion collector: a run is ordered in the row that it reads, and its one
// argument word tells which. It is never waited for; its results come by the shared tables. Failed
// statements raise StoreError.
#pragma once

#include <QString>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "platform/processes.h"
#include "store/stores.h"

namespace guanchao {

// Under either of its names, caijiqi and caijiqi2.
bool collectorRuns(Processes& processes);

class CollectorLaunch {
public:
    CollectorLaunch(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                    Processes& processes)
        : stores_(stores), globals_(globals), dialogs_(dialogs), processes_(processes) {}

    // Orders the run in any case; starts the collector unless one runs, under either name.
    void launch(const QString& argumentWord);

private:
    const Stores& stores_;
    const Globals& globals_;
    Dialogs& dialogs_;
    Processes& processes_;
};

}  // namespace guanchao
