#include "app/maintenance.h"

#include <QFile>

#include "base/activity.h"
#include "platform/home_places.h"
#include "store/connection.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool hasNoKey(const QString& path) {
    const QByteArray beginning("SQLite format 3", 16);
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(beginning.size()) == beginning;
}

}  // namespace

void clearMaintenanceKey(Dialogs& dialogs) {
    const Activity activity(u"设置密码"_s);
    const QString path = homePath(HomePlace::maintenanceStore);
    if (hasNoKey(path)) {
        dialogs.tell(u"文件 "_s + path + u" 没有密码，不用再取消。"_s);
        return;
    }
    if (QFile file(path); file.exists() && file.size() == 0) {
        throw OperationError(u"文件 "_s + path + u" 是空的，不是主题库。"_s);
    }
    rekey(path, u"kqmt20190725bvdn"_s, {});
    dialogs.tell(u" 设置密码完成！"_s);
}

}  // namespace guanchao
