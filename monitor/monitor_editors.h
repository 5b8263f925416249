// What the two monitor editors do behind their windows: open for adding or changing, and confirm,
// which keeps the poll list within the frequency. Tables zhutijiankong, gegujiankong, jiankonghq,
// dzhzhuti, dmb and tempcanshu of the main store. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "store/recordset.h"
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

// What both editors share: their mode and the order of a confirmation.
class MonitorEditor {
public:
    virtual ~MonitorEditor() = default;
    MonitorEditor(const MonitorEditor&) = delete;
    MonitorEditor& operator=(const MonitorEditor&) = delete;

    // "添加" or "修改", and what the editor is for.
    QString caption() const;

    // Takes the current theme or stock over from `globals`, which it empties.
    MonitorFields load();

    // True if the monitor is written and the editor may close; a refusal has had its message.
    virtual bool confirm(const MonitorFields& typed);

protected:
    // `subject` is what is monitored, `query` finds its monitor by the name that follows. Reads the
    // mode from `globals`, once.
    MonitorEditor(const QString& subject, const QString& query, const Stores& stores,
                  Globals& globals, Dialogs& dialogs);

    virtual MonitorFields takeCurrent() = 0;
    virtual void read(const Recordset& monitor, MonitorFields& fields) const;
    virtual bool add(Connection& connection, const MonitorFields& fields) = 0;
    virtual bool modify(Connection& connection, const MonitorFields& fields) = 0;

    const Stores& stores_;
    Globals& globals_;
    Dialogs& dialogs_;
    EditorMode mode_;

private:
    QString subject_;
    QString query_;
};

class ThemeMonitorEditor : public MonitorEditor {
public:
    ThemeMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs);

private:
    MonitorFields takeCurrent() override;
    bool add(Connection& connection, const MonitorFields& fields) override;
    bool modify(Connection& connection, const MonitorFields& fields) override;
    int memberCount(Connection& connection, const QString& zhutiname);
};

class StockMonitorEditor : public MonitorEditor {
public:
    StockMonitorEditor(const Stores& stores, Globals& globals, Dialogs& dialogs);

    // The short name of a picked code, nothing if the code table lacks it.
    std::optional<QString> shortName(const QString& dm) const;

    // The code counts in upper case.
    bool confirm(const MonitorFields& typed) override;

private:
    MonitorFields takeCurrent() override;
    void read(const Recordset& monitor, MonitorFields& fields) const override;
    bool add(Connection& connection, const MonitorFields& fields) override;
    bool modify(Connection& connection, const MonitorFields& fields) override;
    std::optional<QString> listedName(Connection& connection, const QString& dm);
};

}  // namespace guanchao
