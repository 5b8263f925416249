#include "platform/pick_file.h"

#include <QDir>
#include <QFileInfo>

#include "platform/home_places.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QCoro::Task<std::optional<QString>> pickFile(Dialogs& dialogs, QString title, QString file,
                                             std::stop_token stop) {
    const QString folder = homePath(HomePlace::exportFolder);
    const QString path = co_await dialogs.dakaiwenjian(stop, title, folder, file);
    if (path.isEmpty()) {
        dialogs.tell(u"没有选择文件。"_s);
        co_return std::nullopt;
    }
    co_return path;
}

QString offeredFolder() {
    const QString folder = homePath(HomePlace::exportFolder);
    return QFileInfo::exists(folder) ? folder : QDir::homePath();
}

}  // namespace guanchao
