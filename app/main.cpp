// Wires the three floors together: the values that windows share, the services of this desktop and
// the main window.
#include <QFileInfo>

#include "app/application.h"
#include "app/form2.h"
#include "app/looks.h"
#include "platform/curl_http.h"
#include "platform/desktop/desktop_clipboard.h"
#include "platform/desktop/desktop_dialogs.h"
#include "platform/desktop/desktop_processes.h"
#include "platform/desktop/desktop_shell.h"
#include "platform/desktop/desktop_sound.h"
#include "platform/desktop/desktop_tray.h"
#include "platform/desktop/qt_event_pump.h"

using namespace guanchao;

int main(int argc, char** argv) {
    Application application(argc, argv);
    const QFileInfo executable(QCoreApplication::applicationFilePath());
    const QString folder = applicationFolder(executable.absolutePath());

    Globals globals;
    Stores stores;
    const Services services = readServices(folder + QStringLiteral("services.ini"));
    SystemClock clock;
    DesktopDialogs dialogs;
    application.setDialogs(&dialogs);
    QtEventPump pump;
    CurlHttp http;
    DesktopShell shell;
    DesktopSound sound;
    DesktopClipboard clipboard;
    DesktopProcesses processes;
    DesktopTray tray(programIcon());
    TrayModule trayModule(tray, globals);
    Environment environment{.globals = globals,
                            .stores = stores,
                            .services = services,
                            .clock = clock,
                            .dialogs = dialogs,
                            .pump = pump,
                            .http = http,
                            .shell = shell,
                            .sound = sound,
                            .clipboard = clipboard,
                            .processes = processes,
                            .tray = trayModule,
                            .programFolder = folder,
                            .executableName = executable.fileName()};

    Windows windows(environment);
    Form2 form2(environment, windows);
    tray.attach(form2.tuopanmenu(), [&form2] { form2.tuopan显示_Click(); });
    application.guard([&form2] { form2.Form_Load(); });
    form2.show();
    return Application::exec();
}
