#include "monitor/editor_window.h"

#include "frame/file_field.h"
#include "monitor/form4.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void confirmMonitor(QDialog& window, MonitorEditor& editor, const MonitorFields& fields,
                    Windows& windows) {
    if (editor.confirm(fields)) {
        windows.openAnew<Form4>();
        window.close();
    }
}

QCoro::Task<> pickSoundInto(QLineEdit& box, Dialogs& dialogs, std::stop_token stop) {
    return pickFileInto(box, dialogs, u"请选择音乐文件"_s, u".mp3"_s, stop);
}

}  // namespace guanchao
