#include "app/startup.h"

#include "exchange/restore.h"
#include "store/row_images.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void loadProgram(const QString& programFolder, TrayModule& tray, Globals& globals, Stores& stores,
                 const Clock& clock, const std::function<void()>& refresh) {
    tray.add(u"右键弹出菜单"_s);
    globals.hqmang = 0;
    globals.wenzhangdalei.clear();
    globals.wenzhangxiaolei.clear();
    globals.yingyongmulu = applicationFolder(programFolder);
    stores = storesIn(globals.yingyongmulu);
    finishRestore(stores, copiesFolder(globals.yingyongmulu));
    dropCommitLeftovers(stores.main, stores.heat);
    // The collector's code-table mode is deliberately not started here.
    globals.jintian = clock.now().date();
    refresh();
}

}  // namespace guanchao
