// What a window under test is given: real stores in a temporary folder, every service faked.
#pragma once

#include "app/desktop.h"
#include "frame/environment.h"
#include "frame/open_windows.h"
#include "frame/windows.h"
#include "market/mean_volume.h"
#include "research/asked_history.h"
#include "tests/support/fakes.h"
#include "tests/support/test_stores.h"
#include "tests/support/test_windows.h"

namespace guanchao {

struct TestEnvironment {
    TestEnvironment() = default;
    TestEnvironment(const TestEnvironment&) = delete;
    TestEnvironment& operator=(const TestEnvironment&) = delete;
    // No window outlives what it was given.
    ~TestEnvironment() {
        dialogs_.onTell = dialogs_.onAsk = dialogs_.onInput = nullptr;
        closeWindows();
        deleteClosedWindows();
    }

    // Without waiting for any.
    static void closeWindows() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->testAttribute(Qt::WA_DeleteOnClose)) {
                window->close();
            }
        }
    }

    TestStores store_;
    Globals globals_;
    Stores stores_ = store_.stores;
    Removals removals_{store_.folder() + QStringLiteral("撤消/")};
    Services services_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    OpenWindows openWindows_;
    FakeFailures failures_;
    FakeHttp http_;
    FakeShell shell_;
    FakeSound sound_;
    FakeNotifier notifier_;
    FakeClipboard clipboard_;
    FakeProcesses processes_;
    FakeTray desktopTray_;
    TrayModule tray_{desktopTray_, globals_};
    AskedHistory askedHistory_;
    MeanVolume meanVolume_{http_, services_.history, clock_};
    Environment environment_{.globals = globals_,
                             .stores = stores_,
                             .removals = removals_,
                             .services = services_,
                             .clock = clock_,
                             .openWindows = openWindows_,
                             .dialogs = dialogs_,
                             .failures = failures_,
                             .client = http_,
                             .shell = shell_,
                             .clipboard = clipboard_,
                             .processes = processes_,
                             .askedHistory = askedHistory_,
                             .meanVolume = meanVolume_,
                             .applicationFolder = store_.folder(),
                             .executableName = QStringLiteral("guanchaotai")};
    Desktop desktop_{
        tray_,
        sound_,
        notifier_,
        {store_.folder() + QStringLiteral("desktop"), store_.folder() + QStringLiteral("programs"),
         store_.folder() + QStringLiteral("startup")}};
    Windows windows_{environment_};
};

}  // namespace guanchao
