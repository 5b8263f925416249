// The whole collector: the job that the argument word names, its services and the window, wired
// together. Only one collector at a time works on a heat store.
#pragma once

#include <memory>
#include <optional>
#include <random>

#include "base/run_note.h"
#include "collector/collector_window.h"
#include "formats/initials.h"
#include "frame/application.h"
#include "heat/collector_contract.h"
#include "platform/desktop/desktop_dialogs.h"
#include "platform/desktop/desktop_notifier.h"
#include "platform/desktop/desktop_shell.h"
#include "platform/log_file.h"
#include "platform/process_lock.h"
#include "platform/qt_http_client.h"
#include "services/polite_http.h"
#include "services/service_watch.h"
#include "services/services.h"
#include "store/application_folder.h"

namespace guanchao {

class CollectorProgram {
public:
    // Raises OperationError where the application folder can't be made ready.
    explicit CollectorProgram(Application& application);

    // Returns when the run has ended and its window, if it has one, is closed. 0: the run came to
    // its end, or was ended by the user; 1: it couldn't begin; 2: no such job; 3: nothing was read,
    // or the run was given up.
    int run();

private:
    void begin(Scope scope);
    void openRun(Scope scope);
    void beginAgain(Scope scope);
    void lockStore();
    void refuse(const QString& reason);
    std::unique_ptr<Job> makeJob();
    std::unique_ptr<Job> makeCodeTableJob();
    void noteEnd(const RunTally& tally);
    void end();

    Application& application_;
    QString folder_ = preparedApplicationFolder();
    Stores stores_ = storesIn(folder_);
    Services services_ = readServices(folder_ + QStringLiteral("services.ini"));
    SystemClock clock_;
    LogFile log_{folder_ + logOfCollector, clock_};
    DesktopDialogs dialogs_;
    DesktopNotifier notifier_;
    DesktopShell shell_;
    QtHttpClient web_;
    PoliteHttp polite_{web_, clock_};
    ServiceWatch client_{polite_, clock_};
    ProcessLock lock_{stores_.heat.path + QStringLiteral(".lock")};
    std::mt19937 random_{std::random_device()()};

    QString word_;  // which job
    CollectorSettings settings_;
    RunOrder order_;
    std::unique_ptr<Initials> initials_;
    std::unique_ptr<Job> job_;
    std::unique_ptr<Pacing> pacing_;
    std::unique_ptr<Collection> collection_;
    std::optional<RunNote> note_;
    std::unique_ptr<CollectorWindow> window_;
};

}  // namespace guanchao
