// The launch of the companion collector: the settings row that it reads (table canshu of the heat
// store) and its one argument word. It is never waited for; its results come by the shared tables.
// Failed statements raise StoreError.
#pragma once

#include <QString>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "platform/processes.h"
#include "store/stores.h"

namespace guanchao {

// The argument words, by what is to be collected.
inline const QString collectThemes = QStringLiteral("zhuti");
inline const QString collectCompanies = QStringLiteral("gongsi");
inline const QString collectCommodities = QStringLiteral("shop");

class CollectorLaunch {
public:
    CollectorLaunch(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                    Processes& processes)
        : stores_(stores), globals_(globals), dialogs_(dialogs), processes_(processes) {}

    // Writes the settings in any case; starts the collector unless one runs, under either name.
    void launch(const QString& argumentWord);

private:
    void writeSettings();
    bool isRunning();

    const Stores& stores_;
    const Globals& globals_;
    Dialogs& dialogs_;
    Processes& processes_;
};

}  // namespace guanchao
