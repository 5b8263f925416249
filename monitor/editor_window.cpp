#include "monitor/editor_window.h"

#include <QPointer>

#include "monitor/form4.h"

namespace guanchao {

// Under the messages of the editor and of the manager that makes room, the window may go.
void confirmMonitor(QDialog& window, MonitorEditor& editor, const MonitorFields& fields,
                    Windows& windows) {
    const QPointer alive(&window);
    if (!editor.confirm(fields) || !alive) {
        return;
    }
    windows.openAnew<Form4>();
    if (alive) {
        window.close();
    }
}

void pickSoundInto(QLineEdit& box, Dialogs& dialogs) {
    const QPointer alive(&box);
    const std::optional<QString> file = pickSound(dialogs);
    if (file && alive) {
        box.setText(*file);
    }
}

}  // namespace guanchao
