#include "app/maintenance.h"

#include "base/activity.h"
#include "platform/fixed_folders.h"
#include "store/connection.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void clearMaintenanceKey(Dialogs& dialogs) {
    const Activity activity(u"设置密码"_s);
    rekey(fixedPath(FixedPlace::maintenanceStore), u"kqmt20190725bvdn"_s, {});
    dialogs.tell(u" 设置密码完成！"_s);
}

}  // namespace guanchao
