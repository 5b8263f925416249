#include "research/history_fill.h"

#include <QScopeGuard>
#include <QSet>
#include <algorithm>

#include "base/activity.h"
#include "base/time_left.h"
#include "research/fill_jobs.h"
#include "research/history_rows.h"
#include "services/polite_http.h"
#include "services/stock_code.h"
#include "services/trading_day.h"
#include "store/patient_worker.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// In one transaction.
constexpr qsizetype quotesInABatch = 500;
constexpr qsizetype mostFailuresInARow = 10;
constexpr qsizetype mostUnknownInARow = 50;
// Of a quote that shows that the code is traded.
constexpr int oldestQuoteDays = 15;
constexpr int mostRests = 3;

bool hasWeekday(const DayRange& days) {
    for (QDate day = days.first; day <= days.last; day = day.addDays(1)) {
        if (isWeekday(day)) {
            return true;
        }
    }
    return false;
}

}  // namespace

HistoryFill::HistoryFill(const Stores& stores, const Clock& clock, HttpClient& http,
                         const Services& services, FillWish wish, RunControl& control, Show show,
                         Wait wait)
    : files_{stores.firstHistory.path, stores.secondHistory.path},
      main_(stores.main),
      clock_(clock),
      wish_(wish),
      control_(control),
      show_(std::move(show)),
      wait_(std::move(wait)),
      past_(http, clock, services),
      quotes_(http, clock, services.quote) {}

QCoro::Task<FillTally> HistoryFill::run(std::stop_token stop) {
    const std::stop_callback whenStopped(stop, [this] { control_.stop(); });
    // Requests that are on their way must not come back to a run that is over.
    const auto atTheEnd = qScopeGuard([this] { control_.stop(); });
    try {
        co_await carryOut(stop);
    } catch (const Cancelled&) {
        tally_.stopped = tally_.ending.isEmpty();
    }
    endIfStopped(stop);
    co_await write(stop);
    giveUp(streak_);
    co_return FillTally(tally_);
}

QCoro::Task<> HistoryFill::carryOut(std::stop_token stop) {
    const QDate last = lastDayOver(clock_.now());
    wanted_ = {last.addYears(-wish_.years), last};
    tally_.ending = past_.fault();
    if (!tally_.ending.isEmpty()) {
        co_return;
    }
    show(u"正在读取已有的历史行情…"_s);
    co_await readLibrary(stop);
    co_await readState(stop);
    const bool hasMarketDays = co_await fillLeadingIndex(stop);
    if (hasMarketDays) {
        co_await takeQuotes(stop);
        co_await findGaps(stop);
        co_await fillGaps(stop);
    }
}

QCoro::Task<> HistoryFill::readLibrary(std::stop_token stop) {
    const auto job = [main = main_](const auto&) {
        const Activity activity = filling();
        return readHistoryLibrary(main);
    };
    const HistoryLibrary library = co_await inWorker(job, control_.asking(), stop);
    members_ = library.members;
    for (const HistoryCode& code : library.codes) {
        codes_ << code.dm;
    }
}

QCoro::Task<> HistoryFill::readState(std::stop_token stop) {
    const auto job = [files = files_, codes = QStringList(leadingIndex) + codes_,
                      today = clock_.now().date()](const auto& work) {
        return levelledState(files, codes, today, [&work] { work.endIfStopped(); });
    };
    state_ = co_await inWorker(job, control_.asking(), stop);
}

// How far back a code is wanted.
DayRange HistoryFill::wantedOf(const StoredDays& stored) const {
    if (!wish_.onlyNewDays) {
        return wanted_;
    }
    return stored.count > 0 ? DayRange{stored.last.addDays(1), wanted_.last} : DayRange();
}

// By the calendar: its days are what others are measured by.
std::optional<CodeGap> HistoryFill::indexGap() const {
    const StoredDays stored = state_.codes.value(leadingIndex);
    DayRange days = wantedOf(stored);
    if (stored.asked.holds(days.first)) {
        days.first = stored.asked.last.addDays(1);
    }
    if (days.isNull() || !hasWeekday(days)) {
        return std::nullopt;
    }
    return CodeGap{leadingIndex, days, joined(stored.asked, days), 0, state_.ofIndex};
}

// False if there are no market days to go by.
QCoro::Task<bool> HistoryFill::fillLeadingIndex(std::stop_token stop) {
    show(u"正在询问上证指数的交易日…"_s);
    const bool isEmpty = state_.marketDays.isEmpty();
    if (isEmpty && wish_.onlyNewDays) {
        tally_.ending = u"还没有历史行情，请先点“补全”"_s;
        co_return false;
    }
    QList<DayRow> rows;
    DayRanges asked;
    if (const std::optional<CodeGap> gap = indexGap()) {
        const FilledGap index = co_await past_.fetch(*gap, control_.asking());
        if (!index.lack.isEmpty() || (isEmpty && index.rows.isEmpty())) {
            tally_.ending = u"读不到上证指数的日线："_s +
                            (index.lack.isEmpty() ? u"应答里没有日线"_s : index.lack);
            co_return false;
        }
        rows = index.rows;
        if (!index.asked.isNull()) {
            asked[leadingIndex] = index.asked;
        }
    }
    co_await store(rows, members_, asked, FactorsOfCodes(), stop);
    QSet<QDate> days(state_.marketDays.cbegin(), state_.marketDays.cend());
    for (const DayRow& row : rows) {
        days << row.day;
    }
    state_.marketDays = QList<QDate>(days.cbegin(), days.cend());
    std::ranges::sort(state_.marketDays);
    tally_.newestDay = state_.marketDays.last();
    co_return true;
}

// Stocks whose days reach to the one before that of the quotes.
QStringList HistoryFill::upToDateCodes(const QDate& formerDay) const {
    QStringList codes;
    std::ranges::copy_if(codes_, std::back_inserter(codes), [&](const QString& dm) {
        return isStockCode(dm) && state_.codes.value(dm).last == formerDay;
    });
    return codes;
}

// The close of the day for all that reach to the day before: a few requests in place of thousands.
QCoro::Task<> HistoryFill::takeQuotes(std::stop_token stop) {
    const QStringList indexAlone(leadingIndex);
    const DayQuotes::Note noNote = [](int) {};
    const QList<DayQuote> index = co_await quotes_.fetch(indexAlone, noNote, control_.asking());
    if (index.isEmpty() || !index.first().moment.isValid()) {
        co_return;
    }
    const QDate day = index.first().moment.date();
    const auto next = std::ranges::lower_bound(state_.marketDays, day);
    if (day > wanted_.last || next == state_.marketDays.begin()) {
        co_return;
    }
    const QDate formerDay = *std::prev(next);
    const QStringList codes = upToDateCodes(formerDay);
    const auto total = static_cast<int>(codes.size());
    const DayQuotes::Note note = [=, this](int asked) {
        show(u"正在询问当天的收盘行情…"_s, asked, total);
    };
    QList<DayQuote> quotes = co_await quotes_.fetch(codes, note, control_.asking());
    quotes.removeIf([&](const DayQuote& it) { return it.moment.date() != day || !it.isOfClose(); });
    for (qsizetype at = 0; at < quotes.size(); at += quotesInABatch) {
        co_await storeQuotes(quotes.mid(at, quotesInABatch), formerDay, stop);
    }
}

QCoro::Task<> HistoryFill::storeQuotes(QList<DayQuote> quotes, QDate formerDay,
                                       std::stop_token stop) {
    const auto job = [quotes, files = files_](const auto&) { return rowsThatGoOn(files, quotes); };
    const QList<DayRow> rows = co_await inWorker(job, control_.asking(), stop);
    DayRanges asked;
    for (const DayRow& row : rows) {
        StoredDays& stored = state_.codes[row.dm];
        if (stored.asked.holds(formerDay)) {
            stored.asked.last = std::max(stored.asked.last, row.day);
            asked[row.dm] = stored.asked;
        }
        stored.last = row.day;
        ++stored.count;
    }
    co_await store(rows, std::nullopt, asked, FactorsOfCodes(), stop);
    tally_.codes += static_cast<int>(rows.size());
}

QCoro::Task<> HistoryFill::findGaps(std::stop_token stop) {
    show(u"正在找缺少的日子…"_s);
    WantedDays wanted;
    for (const QString& dm : codes_) {
        const DayRange days = wantedOf(state_.codes.value(dm));
        if (!days.isNull()) {
            wanted << qMakePair(dm, days);
        }
    }
    const bool withFactors = past_.namesFactors() && !wish_.onlyNewDays;
    const auto job = [=, state = state_, files = files_](const auto& work) {
        return gapsOf(files, state, wanted, withFactors, [&work] { work.endIfStopped(); });
    };
    const QList<CodeGap> gaps = co_await inWorker(job, control_.asking(), stop);
    gaps_.assign(gaps.begin(), gaps.end());
}

// A service that turns away is asked for one code at a time from then on.
QCoro::Task<> HistoryFill::fillGaps(std::stop_token stop) {
    total_ = static_cast<int>(gaps_.size());
    qsizetype ahead = past_.ahead();
    std::deque<QCoro::Task<FilledGap>> onTheirWay;
    working_.goOn();
    while (!gaps_.empty() || !onTheirWay.empty()) {
        co_await waitWhilePaused(stop);
        for (; !gaps_.empty() && std::ssize(onTheirWay) < ahead; gaps_.pop_front()) {
            onTheirWay.push_back(past_.fetch(gaps_.front(), control_.asking()));
        }
        const FilledGap filled = co_await std::move(onTheirWay.front());
        onTheirWay.pop_front();
        take(filled);
        ahead = filled.turnedAway ? 1 : ahead;
        show(u"正在补 "_s + filled.gap.dm, ++done_, total_);
        if (batch_.size() >= codesInABatch) {
            co_await write(stop);
        }
        if (streak_.size() >= mostFailuresInARow) {
            co_await endStreak(stop);
        }
        if (unknown_.size() >= mostUnknownInARow) {
            co_await endIfUnknownOnesAreTraded();
        }
    }
}

QCoro::Task<> HistoryFill::waitWhilePaused(std::stop_token stop) {
    if (!control_.isPaused()) {
        co_return;
    }
    co_await write(stop);
    working_.rest();
    show(u"已暂停"_s, done_, total_);
    co_await control_.untilItGoesOn();
    working_.goOn();
}

// A service that has had enough of us is left alone for a while, and then asked again for those
// codes; any other failure in a row is the end.
QCoro::Task<> HistoryFill::endStreak(std::stop_token stop) {
    const FilledGap last = streak_.last();
    if (!last.turnedAway || rests_ == mostRests) {
        tally_.ending =
            u"连续 %1 次没有读到历史行情，最后一次：%2"_s.arg(streak_.size()).arg(last.lack);
        throw Cancelled();
    }
    ++rests_;
    const QString words = u"连续 %1 次没有读到历史行情，"_s.arg(streak_.size());
    done_ -= static_cast<int>(streak_.size());
    for (const FilledGap& failed : std::exchange(streak_, {})) {
        gaps_.push_back(failed.gap);
    }
    co_await write(stop);
    show(words + triedAgainWords(clock_), done_, total_);
    co_await wait_(longerThanARest, control_.asking());
}

// Codes that have left the market stand together at most; a service that says so of codes that are
// traded is broken.
QCoro::Task<> HistoryFill::endIfUnknownOnesAreTraded() {
    const QStringList codes = std::exchange(unknown_, {});
    const DayQuotes::Note noNote = [](int) {};
    const QList<DayQuote> quotes = co_await quotes_.fetch(codes, noNote, control_.asking());
    const QDate oldest = wanted_.last.addDays(-oldestQuoteDays);
    const auto traded = std::ranges::count_if(quotes, [&](const DayQuote& quote) {
        return quote.close > 0 && quote.moment.date() >= oldest;
    });
    if (2 * traded > codes.size()) {
        tally_.ending =
            u"历史行情的服务说连续 %1 只都没有日线，可是其中 %2 只正在交易，服务可能坏了"_s
                .arg(codes.size())
                .arg(traded);
        throw Cancelled();
    }
}

// One that the services know nothing of is asked for again the next time: it may be new.
void HistoryFill::take(const FilledGap& filled) {
    if (!filled.lack.isEmpty()) {
        streak_ << filled;
        return;
    }
    giveUp(std::exchange(streak_, {}));
    rests_ = 0;
    if (filled.isKnown) {
        batch_ << filled;
        tally_.codes += filled.gap.days.isNull() ? 0 : 1;
        unknown_.clear();
    } else {
        ++tally_.unknown;
        unknown_ << filled.gap.dm;
    }
}

void HistoryFill::giveUp(const QList<FilledGap>& failed) {
    for (const FilledGap& it : failed) {
        tally_.lack(it.gap.dm, it.lack);
    }
}

QCoro::Task<> HistoryFill::write(std::stop_token stop) {
    if (batch_.isEmpty()) {
        co_return;
    }
    QList<DayRow> rows;
    DayRanges asked;
    FactorsOfCodes factors;
    for (const FilledGap& filled : std::exchange(batch_, {})) {
        rows << filled.rows;
        if (filled.factors) {
            factors[filled.gap.dm] = *filled.factors;
        }
        if (!filled.asked.isNull()) {
            asked[filled.gap.dm] = filled.asked;
        }
    }
    co_await store(rows, std::nullopt, asked, factors, stop);
}

// Another program, or a scan, may hold a file for a while.
QCoro::Task<> HistoryFill::store(QList<DayRow> rows, std::optional<QList<ThemeMember>> members,
                                 DayRanges asked, FactorsOfCodes factors, std::stop_token stop) {
    const auto job = [=, files = files_](const auto&) {
        const Activity activity = filling();
        return addToHistory(files, rows, members, asked, factors);
    };
    const AddedDays added = co_await inWorkerOnceFree(job, wait_, control_, stop);
    tally_.rows += static_cast<int>(added.added);
    tally_.refactored += added.refactored;
}

void HistoryFill::show(const QString& step, int done, int total) {
    show_({step, done, total, timeLeftWords(working_.elapsed(), done, total)});
}

}  // namespace guanchao
