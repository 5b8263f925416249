#include "frame/file_field.h"

#include "platform/pick_file.h"

namespace guanchao {

QCoro::Task<> pickFileInto(QLineEdit& field, Dialogs& dialogs, QString title, QString file,
                           std::stop_token stop) {
    const std::optional<QString> path = co_await pickFile(dialogs, title, file, stop);
    if (path) {
        field.setText(*path);
    }
}

}  // namespace guanchao
