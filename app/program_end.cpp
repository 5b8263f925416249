#include "app/program_end.h"

#include <utility>

#include "base/activity.h"
#include "frame/open_windows.h"
#include "heat/collector_contract.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString imageNameToEnd(const QString& executableName) {
    QString name = executableName;
    if (name.endsWith(u'2')) {
        name.chop(1);
    }
    return name + u".exe"_s;
}

ProgramEnd::ProgramEnd(QWidget& mainWindow, Environment& environment, TrayModule& tray,
                       EndRuns endRuns)
    : mainWindow_(mainWindow),
      environment_(environment),
      tray_(tray),
      endRuns_(std::move(endRuns)),
      runs_(environment.failures) {}

void ProgramEnd::closeMainWindow() {
    if (!runs_.running()) {
        runs_.start([this](std::stop_token stop) { return askWhichWay(stop); });
    }
}

void ProgramEnd::exit() {
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return end(stop); });
}

QCoro::Task<> ProgramEnd::askWhichWay(std::stop_token stop) {
    const bool ends =
        co_await environment_.dialogs.ask(stop, u"点“确定”退出，点“取消”进入托盘。"_s);
    if (ends) {
        co_await end(stop);
    } else {
        co_await hideInTray(stop);
    }
}

QCoro::Task<> ProgramEnd::hideInTray(std::stop_token stop) {
    const bool inTray = tray_.hide(environment_.dialogs);
    if (inTray) {
        mainWindow_.hide();
    } else {
        mainWindow_.showMinimized();
    }
    co_await environment_.openWindows.closeAll(stop);
}

// A window whose user keeps unsaved work keeps the program running, and the collector with it: it
// hears of the end only when that is sure.
QCoro::Task<> ProgramEnd::end(std::stop_token stop) {
    const bool closed = co_await environment_.openWindows.closeAll(stop);
    if (!closed) {
        co_return;
    }
    co_await endRuns_(stop);
    tellCollector();
    tray_.remove();
    environment_.processes.endByImageName(imageNameToEnd(environment_.executableName));
    environment_.processes.endThisProcess();
}

// A heat store that can't be written doesn't keep the program from ending.
void ProgramEnd::tellCollector() {
    environment_.failures.guard([this] {
        const Activity activity(u"通知采集程序退出"_s);
        withdrawRunOrder(environment_.stores.heat);
    });
}

}  // namespace guanchao
