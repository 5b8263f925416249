// 取后期涨幅: what buying a stock after its report was announced and holding it up to the report
// would have gained, for each row of yejiyuyuejinqi (main store), from the first history database.
// Gains are percent with two decimals; 0 means not computed. A failed statement raises StoreError.
#pragma once

#include <QList>
#include <functional>

#include "platform/dialogs.h"
#include "research/research_run.h"
#include "store/stores.h"

namespace guanchao {

// One trading day of a stock, adjusted prices in yuan.
struct AdjustedDay {
    QString shijian;  // yyyy-MM-dd
    double fqkp = 0;  // 复权开盘, the open
    double fqsp = 0;  // 复权收盘, the close
};

struct ForwardGains {
    double yirizhang = 0;    // one day on
    double errizhang = 0;    // two days on
    double wurizhang = 0;    // five days on
    double daoqizhang = 0;   // up to the report
    double kaipanzhang = 0;  // open against close of the first day
};

// The gains over the history of one announcement, oldest day first. `former` are those of the
// announcement before it: where nothing could be bought, its errizhang stays.
ForwardGains forwardGains(const QList<AdjustedDay>& history, const ForwardGains& former);

// The announcements of one code, in their order.
class CodeReturns {
public:
    using ReadHistory = std::function<QList<AdjustedDay>()>;

    // A second announcement of one day has the gains of the first; its history is not read.
    const ForwardGains& next(const QString& shijian, const ReadHistory& readHistory);

private:
    QString shijian_;
    ForwardGains gains_;
};

struct PriorGains {
    double one = 0;    // 1 day
    double three = 0;  // 3 days
    double ten = 0;    // 10 days
    double all = 0;    // up to 130 days
};

// The gains of the newest day over earlier ones, newest day first.
PriorGains priorGains(const QList<AdjustedDay>& history);

class ForwardReturns {
public:
    ForwardReturns(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                   ResearchRun& run);

    // 取后期涨幅 (Command9): all announcements from 2016-04-01 on. With Check1 ticked
    // (`stopTicked`) it ends after the first code, as a run that is stopped does after the one in
    // work, without a message. It doesn't begin while an import writes. The store refuses the
    // statement that reads a history, so a run ends at the first code that has announcements of its
    // own.
    QCoro::Task<> takeForwardReturns(bool stopTicked, std::stop_token stop);

    // 计算前面涨幅: what the stock had gained before the day (yyyy-MM-dd); all 0 if the history
    // can't be read. `showCaption` gets the words for the window's caption. No button runs it at
    // present.
    PriorGains priorGains(const QString& dm, const QString& day,
                          const std::function<void(const QString&)>& showCaption);

private:
    const Stores& stores_;
    const Globals& globals_;
    Dialogs& dialogs_;
    ResearchRun& run_;
};

}  // namespace guanchao
