// Form7, "添加个股监控" or "修改个股监控": the editor of a monitor on a stock. Tables
// gegujiankong, jiankonghq and dmb; the rules are in StockMonitorEditor. bianjimoshi tells what it
// opens for.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/picker_box.h"
#include "monitor/monitor_editors.h"

namespace Ui {
class Form7;
}

namespace guanchao {

class Form7 : public QDialog {
    Q_OBJECT

public:
    Form7(Environment& environment, Windows& windows);
    ~Form7() override;

private:
    void Form_Load();
    void List1_Click();
    void Command1_Click();
    void Command3_Click();
    MonitorFields fields() const;

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form7> ui_;
    StockMonitorEditor editor_;
    PickerBox* picker_ = nullptr;
    Runs runs_;
};

}  // namespace guanchao
