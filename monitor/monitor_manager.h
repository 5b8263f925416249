// What the monitor manager does behind its window: the two tables of monitors, the frequency, the
// start and stop of monitoring, deletions with their sweep of the poll list. Tables zhutijiankong,
// gegujiankong, jiankonghq and tempcanshu of the main store. Failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/clipboard.h"
#include "platform/dialogs.h"
#include "store/removals.h"
#include "store/stores.h"

namespace guanchao {

// Of what the window of monitors can take back.
inline const QString monitorWindowPlace = QStringLiteral("监控管理");

class MonitorManager {
public:
    MonitorManager(const Stores& stores, Globals& globals, Dialogs& dialogs, Clipboard& clipboard,
                   Removals& removals, ResultGrid& themes, ResultGrid& stocks);

    // Fills both grids and empties the selection, as it does at the window's load.
    struct Loaded {
        std::optional<QString> frequency;  // nothing if the store has no row of parameters
        QString monitored;                 // 已监控…只股票。
    };
    Loaded load();
    // The same under the selection, which stays.
    Loaded reload();

    // The words of the window and its button, from the flag.
    QString caption() const;
    QString buttonWords() const;
    // By hand, which holds for the day.
    void toggle(const QDate& today);

    // How many stocks the typed frequency allows, for the label beside it.
    static QString capacityWords(const QString& frequency);

    // Stores the typed frequency. Returns what is to be put back into the box if it is refused: too
    // few seconds for the stocks on the poll list, or no 16-bit number; then nothing is written.
    std::optional<QString> changeFrequency(const QString& frequency);

    // Keys or mouse have chosen the row: hands its theme or stock over, and shows the path of its
    // sound file as the grid's tool tip.
    void selectTheme(int row);
    void selectStock(int row);

    // 全部清空: asks, then deletes every monitor and the poll list, which can be taken back; false
    // if the user refuses.
    QCoro::Task<bool> clearAll(std::stop_token stop);
    // Of the selection; a stock that no other monitor needs leaves the poll list.
    void deleteTheme();
    void deleteStock();

    void copyThemeName();

private:
    void emptySelection();
    QString countWords() const;
    void deleteAll();
    // `monitor` is its table and how it is found there.
    void remove(const QString& subject, const QString& name, const QString& monitor);

    const Stores& stores_;
    Globals& globals_;
    Dialogs& dialogs_;
    Clipboard& clipboard_;
    Removals& removals_;
    ResultGrid& themes_;
    ResultGrid& stocks_;
    QString savedFrequency_ = QStringLiteral("0");  // the last one accepted
};

}  // namespace guanchao
