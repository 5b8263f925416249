// 自动更新: quotes of all stocks again and again while the market is open. The choice is kept in
// 界面.ini of the application folder.
#pragma once

#include <QMenu>
#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/clock.h"

namespace guanchao {

class AutoUpdate : public QObject {
    Q_OBJECT

public:
    // Puts its entry into the menu. `update` is called when an update is due; one that is still
    // under way is left to it.
    AutoUpdate(QMenu& menu, const QString& iniPath, const Clock& clock,
               std::function<void()> update);

private:
    void choose(int seconds);
    void updateIfOpen();

    QString iniPath_;
    const Clock& clock_;
    std::function<void()> update_;
    QTimer timer_;
};

}  // namespace guanchao
