#include "monitor/editor_window.h"

#include "monitor/form4.h"

namespace guanchao {

// A window that was closed under the messages of the editor opens nothing more.
void confirmMonitor(QDialog& window, MonitorEditor& editor, const MonitorFields& fields,
                    Windows& windows) {
    if (editor.confirm(fields) && window.isVisible()) {
        windows.openAnew<Form4>();
        window.close();
    }
}

void pickSoundInto(QLineEdit& box, Dialogs& dialogs) {
    if (const std::optional<QString> file = pickSound(dialogs)) {
        box.setText(*file);
    }
}

}  // namespace guanchao
