#include "monitor/editor_window.h"

#include "frame/file_field.h"
#include "monitor/form4.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// A window that was closed under the messages of the editor opens nothing more.
void confirmMonitor(QDialog& window, MonitorEditor& editor, const MonitorFields& fields,
                    Windows& windows) {
    if (editor.confirm(fields) && window.isVisible()) {
        windows.openAnew<Form4>();
        window.close();
    }
}

void pickSoundInto(QLineEdit& box, Dialogs& dialogs) {
    pickFileInto(box, dialogs, u"请选择音乐文件"_s, u".mp3"_s);
}

}  // namespace guanchao
