// The alarm engine: refreshes the quotes of the poll list at the user's frequency and fires the
// monitors whose value has crossed its threshold since the last poll. Tables tempcanshu,
// jiankonghq, zhutijiankong, gegujiankong and dzhzhuti of the main store; gains in percent, prices
// in yuan.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "base/globals.h"
#include "base/runs.h"
#include "market/quote_feed.h"
#include "monitor/fired_monitor.h"
#include "monitor/rare_tellings.h"
#include "platform/clock.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

// Where the alarms go.
class AlarmScreen {
public:
    virtual ~AlarmScreen() = default;

    // Tells of a monitor that has fired, once.
    virtual void tell(const FiredMonitor& monitor) = 0;
    // Shows the monitor window with what has fired, or answers false where it may not now and is
    // called again at the next tick.
    virtual bool showMonitors() = 0;
    // Starts a sound file.
    virtual void ring(const QString& file) = 0;
    // When the last quotes came, or monitoring began, once a poll fails or brings none; invalid as
    // soon as one does, or none is made.
    virtual void showStale(const QDateTime& since) = 0;
};

class AlarmEngine : private Failures {
public:
    AlarmEngine(const Stores& stores, const Globals& globals, const Clock& clock, QuoteFeed& feed,
                Failures& failures, AlarmScreen& screen);

    // To be called every second. A tick during a poll counts but doesn't poll.
    void tick();

    bool polling() const { return polls_.running(); }

private:
    // The last known values of a stock monitor's code.
    struct StockQuote {
        double sp = 0;
        double zhangfu = 0;
    };

    // What a fired monitor asks for.
    struct Prompt {
        FiredMonitor monitor;
        bool showsWindow = false;
        QString sound;  // empty: none
    };

    // What judging the monitors of a poll has come to.
    struct Judgement {
        std::vector<Prompt> fired;
        QStringList refusals;  // of monitors that can't be read

        void add(const QString& key, const std::function<std::optional<Prompt>()>& judge);
    };

    void report(const std::exception& failure) override;
    QCoro::Task<> pollIfDue(std::stop_token stop);
    QCoro::Task<QStringList> poll(QList<CodeBatch> batches, std::stop_token stop);
    std::optional<QList<CodeBatch>> duePollList() const;
    Judgement judge() const;
    void deliverPrompts();
    void showMonitors();
    void judgeThemes(Connection& connection, Judgement& judgement) const;
    std::optional<Prompt> judgeTheme(Connection& connection, const Recordset& monitor) const;
    void judgeStocks(Connection& connection, Judgement& judgement) const;
    std::optional<Prompt> judgeStock(Connection& connection, const Recordset& monitor,
                                     StockQuote& quote) const;
    QString alarmTime(bool fires) const;
    static Prompt promptOf(const Recordset& row, FiredMonitor monitor);
    void noteQuotes(bool came);
    void tellRefusals(const QStringList& refusals);
    void followMonitoring();

    const Stores& stores_;
    const Globals& globals_;
    const Clock& clock_;
    QuoteFeed& feed_;
    Failures& failures_;
    AlarmScreen& screen_;
    std::vector<Prompt> fired_;    // not yet delivered
    int pinlvjishu_ = 0;           // 频率计数: seconds since the last poll
    bool windowWaits_ = false;     // the monitor window might not be shown for an alarm yet
    QDateTime quotesCameAt_;       // or when monitoring began; invalid while it is off
    bool followsNothing_ = false;  // the poll list was empty: no alarm can be missed
    bool isStale_ = false;         // the last poll brought no quotes
    RareTellings tellings_;
    Runs polls_{*this};
};

}  // namespace guanchao
