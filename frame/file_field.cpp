#include "frame/file_field.h"

#include "platform/pick_file.h"

namespace guanchao {

void pickFileInto(QLineEdit& field, Dialogs& dialogs, const QString& title, const QString& file) {
    if (const std::optional<QString> path = pickFile(dialogs, title, file)) {
        field.setText(*path);
    }
}

}  // namespace guanchao
