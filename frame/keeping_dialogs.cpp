#include "frame/keeping_dialogs.h"

namespace guanchao {

void KeepingDialogs::tell(const QString& text, const QString& title) {
    const OpenWindows::Keep keep(windows_);
    dialogs_.tell(text, title);
}

bool KeepingDialogs::ask(const QString& text, const QString& title) {
    const OpenWindows::Keep keep(windows_);
    return dialogs_.ask(text, title);
}

bool KeepingDialogs::askToLose(const QString& text, const QString& title) {
    const OpenWindows::Keep keep(windows_);
    return dialogs_.askToLose(text, title);
}

QString KeepingDialogs::input(const QString& prompt, const QString& title, const QString& text) {
    const OpenWindows::Keep keep(windows_);
    return dialogs_.input(prompt, title, text);
}

QString KeepingDialogs::dakaiwenjian(const QString& title, const QString& folder,
                                     const QString& file) {
    const OpenWindows::Keep keep(windows_);
    return dialogs_.dakaiwenjian(title, folder, file);
}

QString KeepingDialogs::baocunwenjian(const QString& folder, const QString& file,
                                      const QStringList& filters) {
    const OpenWindows::Keep keep(windows_);
    return dialogs_.baocunwenjian(folder, file, filters);
}

}  // namespace guanchao
