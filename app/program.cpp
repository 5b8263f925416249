#include "app/program.h"

#include <QTimer>
#include <utility>

#include "frame/looks.h"
#include "platform/guide.h"
#include "research/practice_bars.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// How long the window may stand still for a store.
constexpr std::chrono::milliseconds longestOfAClick(80);

}  // namespace

Program::Program(Application& application, DesktopDialogs& dialogs, QString folder)
    : application_(application),
      dialogs_(dialogs),
      folder_(std::move(folder)),
      desktopTray_(programIcon()),
      environment_{.globals = globals_,
                   .stores = stores_,
                   .removals = removals_,
                   .edits = edits_,
                   .services = services_,
                   .servicesFile = servicesFile_,
                   .clock = clock_,
                   .openWindows = openWindows_,
                   .dialogs = dialogs_,
                   .failures = application_,
                   .client = watch_,
                   .watch = watch_,
                   .shell = shell_,
                   .clipboard = clipboard_,
                   .processes = processes_,
                   .askedHistory = askedHistory_,
                   .historyDesk = historyDesk_,
                   .meanVolume = meanVolume_,
                   .polledDay = polledDay_,
                   .storedCandles = storedCandles_,
                   .sharedHistory = sharedHistory_,
                   .applicationFolder = folder_,
                   .executableName = executable_.fileName()} {
    shell_.whenNotOpened(
        [this](const QString& target) { tellNotOpened(target, environment_.dialogs); });
    desktopTray_.attach(form2_.tuopanmenu(), [this] { form2_.tuopan显示_Click(); });
}

int Program::run() {
    // The box of a load that fails comes up over the window.
    QTimer::singleShot(0, &form2_, [this] {
        form2_.show();
        application_.guard([this] { form2_.Form_Load(); });
        application_.guard([this] { tellOfPracticeBars(); });
        brief_.emplace(longestOfAClick);
    });
    writeLog({LogKind::program, u"启动"_s, Application::applicationVersion()});
    const int result = Application::exec();
    writeLog({LogKind::program, u"退出"_s, {}});
    return result;
}

void Program::tellOfPracticeBars() {
    const QString moved = movePracticeBarsAside(stores_);
    if (!moved.isEmpty()) {
        environment_.dialogs.tell(moved);
    }
}

}  // namespace guanchao
