// The whole program: the values that windows share, the services of this desktop and the main
// window, wired together.
#pragma once

#include <QFileInfo>
#include <optional>

#include "app/form2.h"
#include "exchange/kept_copies.h"
#include "frame/application.h"
#include "frame/open_windows.h"
#include "market/mean_volume.h"
#include "market/polled_day.h"
#include "platform/desktop/desktop_clipboard.h"
#include "platform/desktop/desktop_colour_scheme.h"
#include "platform/desktop/desktop_dialogs.h"
#include "platform/desktop/desktop_notifier.h"
#include "platform/desktop/desktop_processes.h"
#include "platform/desktop/desktop_shell.h"
#include "platform/desktop/desktop_sound.h"
#include "platform/desktop/desktop_tray.h"
#include "platform/log_file.h"
#include "platform/qt_http_client.h"
#include "research/asked_history.h"
#include "research/history_candles.h"
#include "research/history_desk.h"
#include "research/history_shelf.h"
#include "services/polite_http.h"
#include "services/service_watch.h"
#include "services/services_file.h"
#include "store/application_folder.h"
#include "store/connection.h"

namespace guanchao {

class Program {
public:
    // `folder` is the application folder, ready for use.
    Program(Application& application, DesktopDialogs& dialogs, QString folder);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Loads and shows the main window, and returns when the program ends.
    int run();

    // Back from the tray too.
    void showMainWindow() { form2_.tuopan显示_Click(); }

private:
    void tellOfPracticeBars();

    Application& application_;
    DesktopDialogs& dialogs_;
    QFileInfo executable_{QCoreApplication::applicationFilePath()};
    QString folder_;

    Globals globals_;
    Stores stores_;
    Removals removals_{copiesFolder(folder_) + QStringLiteral("撤消/")};
    Edits edits_{removals_};
    Services services_ = readServices(folder_ + QStringLiteral("services.ini"));
    ServicesFile servicesFile_{folder_ + QStringLiteral("services.ini"), services_};
    SystemClock clock_;
    LogFile log_{folder_ + logOfProgram, clock_};
    QtHttpClient web_;
    PoliteHttp polite_{web_, clock_};
    ServiceWatch watch_{polite_, clock_};
    DesktopShell shell_;
    DesktopSound sound_;
    DesktopNotifier notifier_;
    DesktopColourScheme colourScheme_;
    DesktopClipboard clipboard_;
    DesktopProcesses processes_{folder_};
    DesktopTray desktopTray_;
    TrayModule tray_{desktopTray_, globals_};
    AskedHistory askedHistory_;
    MeanVolume meanVolume_{watch_, services_.history, clock_};
    PolledDay polledDay_;
    HistoryCandles storedCandles_{stores_};
    SharedHistory sharedHistory_;
    HistoryDesk historyDesk_{stores_,   clock_,       watch_,
                             services_, application_, folder_ + interfaceIni};

    OpenWindows openWindows_{WindowMemory(folder_ + interfaceIni)};
    Environment environment_;
    Windows windows_{environment_};
    // From the load on: what a user does while another program holds a store is refused, not waited
    // for by the whole window.
    std::optional<Connection::BusyTimeout> brief_;
    Form2 form2_{
        environment_, windows_, {tray_, sound_, notifier_, userLauncherFolders(), &colourScheme_}};
};

}  // namespace guanchao
