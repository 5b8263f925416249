// What the two monitor editors do behind their windows: open for adding or changing, and confirm,
// which keeps the poll list within the frequency. Tables zhutijiankong, gegujiankong, jiankonghq,
// dzhzhuti, dmb and tempcanshu of the main store. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "app/globals.h"
#include "platform/dialogs.h"
#include "store/store_error.h"
#include "store/stores.h"

namespace guanchao {

// 编辑模式: what an editor was opened for.
enum class EditorMode : std::uint8_t { add, modify };

// What the fields of both editors hold, as typed.
struct MonitorFields {
    QString name;  // 主题名称, or 股票代码
    QString jc;    // 简称 of a stock
    QString leixin = QStringLiteral("涨幅");
    QString bijiaofu = QStringLiteral(">");
    QString baojinzhi = QStringLiteral("5.0");
    bool tanchuform = true;
    QString yinyue;
};

// The sound file that the user picks; nothing, with a message, if none.
std::optional<QString> pickSound(Dialogs& dialogs);

class ThemeMonitorEditor {
public:
    // Reads the mode from `globals`, once.
    ThemeMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs);

    QString caption() const;

    // Takes the current theme over from `globals`, which it empties.
    MonitorFields load();

    // True if the monitor is written and the editor may close; a refusal has had its message.
    // Nothing of this object is touched after the final message.
    bool confirm(const MonitorFields& fields);

private:
    bool add(Connection& connection, const MonitorFields& fields, Activity& activity);
    bool modify(Connection& connection, const MonitorFields& fields);
    int memberCount(Connection& connection, const QString& zhutiname);

    const Stores& stores_;
    Globals& globals_;
    Dialogs& dialogs_;
    EditorMode mode_;
};

class StockMonitorEditor {
public:
    // Reads the mode from `globals`, once.
    StockMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs);

    QString caption() const;

    // Takes the current stock over from `globals`, which it empties.
    MonitorFields load();

    // The short name of a picked code, nothing if the code table lacks it.
    std::optional<QString> shortName(const QString& dm) const;

    // As in ThemeMonitorEditor.
    bool confirm(const MonitorFields& fields);

private:
    bool add(Connection& connection, const MonitorFields& fields, Activity& activity);
    bool modify(Connection& connection, const MonitorFields& fields);
    std::optional<QString> listedName(Connection& connection, const QString& dm);

    const Stores& stores_;
    Globals& globals_;
    Dialogs& dialogs_;
    EditorMode mode_;
};

}  // namespace guanchao
