// What the windows of the two monitor editors share: their buttons 确定 and 选择.
#pragma once

#include <QDialog>
#include <QLineEdit>

#include "frame/windows.h"
#include "monitor/monitor_editors.h"

namespace guanchao {

// Confirms, opens the monitor manager anew and closes the editor's window.
void confirmMonitor(QDialog& window, MonitorEditor& editor, const MonitorFields& fields,
                    Windows& windows);

// Puts the sound file that the user picks into the box, which outlives the run.
QCoro::Task<> pickSoundInto(QLineEdit& box, Dialogs& dialogs, std::stop_token stop);

}  // namespace guanchao
