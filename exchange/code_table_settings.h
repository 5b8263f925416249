// What the user has said of the code table, in 界面.ini of the application folder.
#pragma once

#include <QSettings>

namespace guanchao {

class CodeTableSettings {
public:
    explicit CodeTableSettings(const QString& iniPath) : ini_(iniPath, QSettings::IniFormat) {}

    // 北交所: whether its stocks are wanted.
    bool wantsBeijing() const { return ini_.value(beijing_, false).toBool(); }
    void setWantsBeijing(bool wanted) { ini_.setValue(beijing_, wanted); }

    // Of the last update from a list, time text; empty before the first.
    QString lastUpdate() const { return ini_.value(updated_).toString(); }
    void setLastUpdate(const QString& time) { ini_.setValue(updated_, time); }

    // Whether the page of the first start has been closed without a choice.
    bool isRefused() const { return ini_.value(refused_, false).toBool(); }
    void setRefused() { ini_.setValue(refused_, true); }

private:
    QSettings ini_;
    const QString beijing_ = QStringLiteral("代码表/北交所");
    const QString updated_ = QStringLiteral("代码表/更新时间");
    const QString refused_ = QStringLiteral("代码表/已问过");
};

}  // namespace guanchao
