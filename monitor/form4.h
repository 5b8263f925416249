// Form4, "监控管理": every monitor, the start and stop of monitoring, the frequency. Tables
// zhutijiankong, gegujiankong, jiankonghq and tempcanshu; the rules are in MonitorManager. A
// frequency counts when it is entered or its box is left; one that was still being typed when the
// window closed is given up.
#pragma once

#include <QDialog>
#include <QMenu>
#include <memory>
#include <optional>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "monitor/fired_monitor.h"
#include "monitor/monitor_manager.h"

namespace Ui {
class Form4;
}

namespace guanchao {

class Form4 : public QDialog {
    Q_OBJECT

public:
    Form4(Environment& environment, Windows& windows);
    ~Form4() override;

    // Shows the monitors as they are now; what the user is typing stays.
    void refresh();
    // Tints those that have fired, until each is looked at, and scrolls to the latest.
    void showFired(const QList<FiredMonitor>& fired);
    // Since when no quotes come, in the caption; empty while they do.
    void showStale(const QString& words);
    // For an alarm: to the front, and unless a box stands over all windows until the user turns to
    // it or a box opens; without the keyboard, which stays where it is.
    void comeUp(bool overAll);

signals:
    void lookedAt(const FiredMonitor& monitor);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void connectControls();
    void connectGrids();
    std::optional<QString> showMonitors(const MonitorManager::Loaded& loaded);
    void showFlag();
    ResultGrid& gridOf(FiredMonitor::Kind kind);
    QList<int> rowsOf(FiredMonitor::Kind kind, const QString& key);
    void tint(FiredMonitor::Kind kind, const QList<int>& rows, bool fired);
    void lookAt(FiredMonitor::Kind kind, int row);
    void changeFrequency();
    void deleteMonitor(void (MonitorManager::*remove)());

    void Form_Load();
    void Command1_Click();
    void Command2_Click();
    void Text1_Change();
    void Text1_LostFocus();
    void 查看行情_Click();
    void 添加监控_Click();
    void 修改监控_Click();
    void 添加监控2_Click();
    void 修改监控2_Click();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form4> ui_;
    ResultGrid themes_;
    ResultGrid stocks_;
    MonitorManager manager_;
    QMenu kuaijie1_;  // 快捷: on a theme monitor
    QMenu kuaijie2_;  // 快捷: on a stock monitor
    QString staleWords_;
    QList<FiredMonitor> fired_;  // not looked at
    std::unique_ptr<UndoLine> undoLine_;
    Runs runs_;
};

}  // namespace guanchao
