// What has become of a run so far, in figures and in words.
#pragma once

#include <QMap>
#include <QStringList>
#include <chrono>

#include "collector/fault.h"
#include "platform/clock.h"

namespace guanchao {

struct RunTally {
    int items = 0;
    int before = 0;  // of them, whose row of the day was there when the run began
    int written = 0;
    int pages = 0;
    QStringList skipped;                  // their names
    QMap<FaultKind, int> failures;        // tries, those that were mended later too
    std::chrono::milliseconds worked{0};  // without pauses
    std::chrono::milliseconds wait{0};    // until anything is asked for again

    int settled() const { return before + written + static_cast<int>(skipped.size()); }
    int left() const { return items - settled(); }

    // 共 60 项，写入 40 项，跳过 1 项.
    QString countWords() const;
    // 失败 5 次：被限制 3，没有应答 2; empty without any.
    QString failureWords() const;
    // 已完成 12 / 60 项，剩余 48 项；读到 36 页，写入 12 行.
    QString progressWords() const;
    // 每分钟 14 页，剩余约 4 分钟，预计 14:35 完成; empty as long as that can't be told.
    QString paceWords(const QDateTime& now) const;
};

}  // namespace guanchao
