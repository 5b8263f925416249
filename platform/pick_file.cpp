#include "platform/pick_file.h"

#include "platform/fixed_folders.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

std::optional<QString> pickFile(Dialogs& dialogs, const QString& title, const QString& file) {
    const QString path = dialogs.dakaiwenjian(title, fixedPath(FixedPlace::exportFolder), file);
    if (path.isEmpty()) {
        dialogs.tell(u"没有选择文件。"_s);
        return std::nullopt;
    }
    return path;
}

}  // namespace guanchao
