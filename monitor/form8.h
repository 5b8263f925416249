// Form8, "添加主题监控" or "修改主题监控": the editor of a monitor on a theme. Tables
// zhutijiankong and jiankonghq; the rules are in ThemeMonitorEditor. bianjimoshi tells what it
// opens for.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "monitor/monitor_editors.h"

namespace Ui {
class Form8;
}

namespace guanchao {

class Form8 : public QDialog {
    Q_OBJECT

public:
    Form8(Environment& environment, Windows& windows);
    ~Form8() override;

private:
    void Form_Load();
    void Command1_Click();
    void Command3_Click();
    MonitorFields fields() const;

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form8> ui_;
    ThemeMonitorEditor editor_;
    Runs runs_;
};

}  // namespace guanchao
