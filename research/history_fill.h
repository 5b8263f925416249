// 补全历史行情: brings both history databases up to date for all codes of the code table, the index
// first. Only what is missing is asked for, at the pace of the services; some codes are one
// transaction a file, and what is committed is not asked for again, also after a kill. The first
// database gets the themes of the main store. One object is one run.
#pragma once

#include <deque>
#include <functional>

#include "base/pause.h"
#include "base/run_control.h"
#include "base/run_progress.h"
#include "base/worker.h"
#include "platform/clock.h"
#include "research/day_quotes.h"
#include "research/fill_tally.h"
#include "research/gap_services.h"
#include "research/history_library.h"
#include "research/history_state.h"
#include "store/stores.h"

namespace guanchao {

struct FillWish {
    int years = 10;
    // 每日更新: of the codes that have days, and no further back than these.
    bool onlyNewDays = false;
};

class HistoryFill {
public:
    // Counts codes.
    using Show = std::function<void(const RunProgress&)>;

    HistoryFill(const Stores& stores, const Clock& clock, HttpClient& http,
                const Services& services, FillWish wish, RunControl& control, Show show,
                Wait wait = pause);

    // To its end or until the control stops it: what the services have told by then is stored.
    // Ends too where they fail time and again; the tally tells why. Raises StoreError.
    QCoro::Task<FillTally> run(std::stop_token stop);

private:
    QCoro::Task<> carryOut(std::stop_token stop);
    QCoro::Task<> readLibrary(std::stop_token stop);
    QCoro::Task<> readState(std::stop_token stop);
    QCoro::Task<bool> fillLeadingIndex(std::stop_token stop);
    QCoro::Task<> takeQuotes(std::stop_token stop);
    QCoro::Task<> storeQuotes(QList<DayQuote> quotes, QDate formerDay, std::stop_token stop);
    QCoro::Task<> findGaps(std::stop_token stop);
    QCoro::Task<> fillGaps(std::stop_token stop);
    QCoro::Task<> waitWhilePaused(std::stop_token stop);
    QCoro::Task<> endStreak(std::stop_token stop);
    QCoro::Task<> endIfUnknownOnesAreTraded();
    QCoro::Task<> write(std::stop_token stop);
    QCoro::Task<> store(QList<DayRow> rows, std::optional<QList<ThemeMember>> members,
                        DayRanges asked, FactorsOfCodes factors, std::stop_token stop);

    DayRange wantedOf(const StoredDays& stored) const;
    std::optional<CodeGap> indexGap() const;
    QStringList upToDateCodes(const QDate& formerDay) const;
    void take(const FilledGap& filled);
    void giveUp(const QList<FilledGap>& failed);
    void show(const QString& step, int done = 0, int total = 0);

    HistoryFiles files_;
    StoreFile main_;
    const Clock& clock_;
    FillWish wish_;
    RunControl& control_;
    Show show_;
    Wait wait_;
    GapServices past_;
    DayQuotes quotes_;

    DayRange wanted_;
    QStringList codes_;
    QList<ThemeMember> members_;
    HistoryState state_;
    FillTally tally_;
    std::deque<CodeGap> gaps_;  // still to be asked for
    int done_ = 0;
    int total_ = 0;
    QList<FilledGap> batch_;   // not yet written
    QList<FilledGap> streak_;  // failures in a row
    int rests_ = 0;            // since the last answer
    QStringList unknown_;      // codes in a row
    WorkTime working_;
};

}  // namespace guanchao
