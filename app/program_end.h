// How the main window closes: into the tray, or with the whole program.
#pragma once

#include <QWidget>
#include <functional>

#include "base/runs.h"
#include "frame/environment.h"
#include "utilities/tray_module.h"

namespace guanchao {

// The image name that the end of the program ends: the executable's name less a final "2", and
// ".exe".
QString imageNameToEnd(const QString& executableName);

class ProgramEnd {
public:
    // `endRuns` ends what the main window has under way and returns when that holds no store.
    using EndRuns = std::function<QCoro::Task<>(std::stop_token stop)>;

    ProgramEnd(QWidget& mainWindow, Environment& environment, TrayModule& tray, EndRuns endRuns);

    // The main window is to close: asks which way, unless one is being gone.
    void closeMainWindow();

    // 退出 in the tray menu: asks nothing itself, and is the later word where a question stands.
    void exit();

private:
    QCoro::Task<> askWhichWay(std::stop_token stop);
    QCoro::Task<> hideInTray(std::stop_token stop);
    QCoro::Task<> end(std::stop_token stop);
    void tellCollector();

    QWidget& mainWindow_;
    Environment& environment_;
    TrayModule& tray_;
    EndRuns endRuns_;
    Runs runs_;
};

}  // namespace guanchao
