#include "app/shutdown.h"

#include "base/activity.h"
#include "heat/collector_contract.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void tellCollector(const Stores& stores) {
    const Activity activity(u"通知采集程序退出"_s);
    withdrawRunOrder(stores.heat);
}

}  // namespace

CloseAnswer answerClose(int tuichubiaozhi, Dialogs& dialogs) {
    if (tuichubiaozhi == 1 || dialogs.ask(u"点“确定”退出，点“取消”进入托盘。"_s)) {
        return CloseAnswer::shutDown;
    }
    return CloseAnswer::hideInTray;
}

QString imageNameToEnd(const QString& executableName) {
    QString name = executableName;
    if (name.endsWith(u'2')) {
        name.chop(1);
    }
    return name + u".exe"_s;
}

void shutDown(const Stores& stores, const QString& executableName, TrayModule& tray,
              Processes& processes, const std::function<void()>& closeOtherWindows,
              const std::function<void(const std::exception&)>& report) {
    try {
        tellCollector(stores);
    } catch (const std::exception& failure) {
        report(failure);
    }
    closeOtherWindows();
    tray.remove();
    processes.endByImageName(imageNameToEnd(executableName));
    processes.endThisProcess();
}

}  // namespace guanchao
