#include "heat/collector_launch.h"

#include "base/activity.h"
#include "heat/collector_contract.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void CollectorLaunch::launch(const QString& argumentWord) {
    {
        const Activity activity(u"启动采集程序"_s);
        placeRunOrder(stores_.heat, globals_.jintian);
    }
    if (collectorRuns(processes_)) {
        dialogs_.tell(u"采集程序已在运行，请先停止采集，关闭采集程序。"_s);
        return;
    }
    // The folder ends in a separator already; the path holds it twice.
    const QString program = globals_.yingyongmulu + u"/caijiqi"_s;
    if (!processes_.start(program, argumentWord)) {
        dialogs_.tell(u"采集程序没有启动，请检查程序文件是否存在：\n"_s + program);
    }
}

bool collectorRuns(Processes& processes) {
    return processes.isRunning(u"caijiqi.exe"_s) || processes.isRunning(u"caijiqi2.exe"_s);
}

}  // namespace guanchao
