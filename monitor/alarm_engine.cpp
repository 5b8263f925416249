#include "monitor/alarm_engine.h"

#include <optional>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "monitor/crossing.h"
#include "monitor/poll_list.h"
#include "store/failure.h"
#include "store/patience.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

Recordset pollListRow(Connection& connection, const QString& dm) {
    return Recordset(connection,
                     u"select  dm,sp,zhangjine,zhangfu from jiankonghq  where dm="_s + quoted(dm));
}

// The mean gain of the members that stand in the poll list, nothing if none does.
std::optional<double> meanGain(Connection& connection, const QString& zhutiname) {
    double sum = 0;
    int count = 0;
    Recordset members(connection,
                      u"select  dm,jc from dzhzhuti  where zhutiname="_s + quoted(zhutiname));
    for (; !members.atEnd(); members.moveNext()) {
        const Recordset quote = pollListRow(connection, members.value(u"dm").toText());
        if (!quote.atEnd()) {
            sum += quote.value(u"zhangfu").toNumber();
            ++count;
        }
    }
    if (count == 0) {
        return std::nullopt;
    }
    return roundTo(sum / count, 4);
}

// "浦发银行 股价 10.6 > 10.5"
QString crossingWords(const QString& name, const QString& leixin, double value,
                      const Recordset& monitor) {
    return QStringList{shortened(name, longestShownName), leixin, numberText(value),
                       monitor.value(u"bijiaofu").toText(), monitor.value(u"baojinzhi").toText()}
        .join(u' ');
}

QString stockName(const Recordset& monitor) {
    const QString jc = trimBlanks(monitor.value(u"jc").toText());
    return jc.isEmpty() ? monitor.value(u"dm").toText() : jc;
}

}  // namespace

AlarmEngine::AlarmEngine(const Stores& stores, const Globals& globals, const Clock& clock,
                         QuoteFeed& feed, Failures& failures, AlarmScreen& screen)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      feed_(feed),
      failures_(failures),
      screen_(screen) {}

void AlarmEngine::tick() {
    followMonitoring();
    if (std::exchange(windowWaits_, false)) {
        showMonitors();
    }
    if (globals_.jiankongkaiqi == 1) {
        ++pinlvjishu_;
        if (globals_.hqmang == 0 && !polls_.running()) {
            polls_.start([this](std::stop_token stop) { return pollIfDue(stop); });
        }
    }
    if (!polls_.running()) {
        deliverPrompts();
    }
}

// Without polls none is stale.
void AlarmEngine::followMonitoring() {
    if (globals_.jiankongkaiqi != 1) {
        noteQuotes(true);
        quotesCameAt_ = {};
    } else if (!quotesCameAt_.isValid()) {
        quotesCameAt_ = clock_.now();
    }
}

void AlarmEngine::report(const std::exception& failure) {
    if (tellings_.isDue(failureReason(failure), clock_.now())) {
        failures_.report(failure);
    }
}

void AlarmEngine::tellRefusals(const QStringList& refusals) {
    tellings_.keepOnly(refusals);
    const QStringList due = tellings_.dueOf(refusals, clock_.now());
    if (!due.isEmpty()) {
        const Activity activity(u"监控行情"_s, u"其余股票的行情已经写入，监控照常判断。"_s);
        failures_.report(RefusedLines(due));
    }
}

QCoro::Task<> AlarmEngine::pollIfDue(std::stop_token stop) {
    QStringList refusals;
    try {
        const std::optional<QList<CodeBatch>> batches =
            co_await patiently([this] { return duePollList(); }, stop);
        if (!batches) {
            co_return;
        }
        pinlvjishu_ = 0;
        followsNothing_ = batches->isEmpty();
        refusals = co_await poll(*batches, stop);
    } catch (const std::exception&) {
        if (followsNothing_) {
            co_return;
        }
        noteQuotes(false);
        throw;
    }
    deliverPrompts();
    tellRefusals(refusals);
}

// Nothing before the user's frequency is reached.
std::optional<QList<CodeBatch>> AlarmEngine::duePollList() const {
    const Activity activity(u"监控行情"_s);
    Connection connection = stores_.main.open();
    if (pinlvjishu_ < neededFrequency(connection).toNumber()) {
        return std::nullopt;
    }
    Recordset codes(connection, u"select dm from jiankonghq"_s);
    return codeBatches(codes);
}

// Gives the lines and monitors that were refused: the others are judged all the same.
QCoro::Task<QStringList> AlarmEngine::poll(QList<CodeBatch> batches, std::stop_token stop) {
    QStringList refusals;
    bool quotesCame = batches.isEmpty();
    const QuoteFeed::Note note = [&](const CodeBatch& batch, const MissedQuotes& missed) {
        refusals << missed.refusals;
        quotesCame = quotesCame || missed.count < batch.count;
    };
    co_await feed_.gengxinhq(batches, 1, note, stop);
    const Judgement judgement = co_await patiently([this] { return judge(); }, stop);
    fired_.insert(fired_.end(), judgement.fired.begin(), judgement.fired.end());
    noteQuotes(quotesCame);
    co_return refusals << judgement.refusals;
}

// One that can't be read keeps no other from being judged; a store that fails ends them all.
void AlarmEngine::Judgement::add(const QString& key,
                                 const std::function<std::optional<Prompt>()>& judge) {
    try {
        if (const std::optional<Prompt> prompt = judge()) {
            fired.push_back(*prompt);
        }
    } catch (const StoreError&) {
        throw;
    } catch (const OperationError& refusal) {
        refusals << key + u"："_s + refusal.reason();
    }
}

// In one transaction: of monitors on one code each new value is the memory of all, and one that was
// not judged yet would find it there after a failure, and stay silent.
AlarmEngine::Judgement AlarmEngine::judge() const {
    const Activity activity(u"监控行情"_s);
    Connection connection = stores_.main.open();
    Transaction transaction(connection);
    Judgement judgement;
    judgeThemes(connection, judgement);
    judgeStocks(connection, judgement);
    transaction.commit();
    return judgement;
}

// Only when the poll is over, so that no alarm waits behind a window for its judgement; those of
// one that failed at the next tick. A window that fails or must wait keeps no sound from playing.
void AlarmEngine::deliverPrompts() {
    bool showsWindow = false;
    for (const Prompt& prompt : std::exchange(fired_, {})) {
        guard([&] { screen_.tell(prompt.monitor); });
        if (!prompt.sound.isEmpty()) {
            guard([&] { screen_.ring(prompt.sound); });
        }
        showsWindow = showsWindow || prompt.showsWindow;
    }
    if (showsWindow) {
        showMonitors();
    }
}

// Once it may be shown again, one window tells of all alarms that it waited with.
void AlarmEngine::showMonitors() {
    if (!windowWaits_) {
        windowWaits_ = true;
        bool shown = true;
        guard([&] { shown = screen_.showMonitors(); });
        windowWaits_ = !shown;
    }
}

void AlarmEngine::noteQuotes(bool came) {
    if (came) {
        quotesCameAt_ = clock_.now();
    }
    if (std::exchange(isStale_, !came) == came) {
        screen_.showStale(came ? QDateTime() : quotesCameAt_);
    }
}

void AlarmEngine::judgeThemes(Connection& connection, Judgement& judgement) const {
    Recordset monitors(connection,
                       u"select  zhutiname,baojinzhi,bijiaofu,yinyue,tanchuform,zhangfu from"
                       u" zhutijiankong"_s);
    for (; !monitors.atEnd(); monitors.moveNext()) {
        judgement.add(monitors.value(u"zhutiname").toText(),
                      [&] { return judgeTheme(connection, monitors); });
    }
}

std::optional<AlarmEngine::Prompt> AlarmEngine::judgeTheme(Connection& connection,
                                                           const Recordset& monitor) const {
    const QString zhutiname = monitor.value(u"zhutiname").toText();
    const std::optional<double> gain = meanGain(connection, zhutiname);
    if (!gain) {
        return std::nullopt;
    }
    const bool fires =
        crosses(monitor.value(u"bijiaofu").toText(), monitor.value(u"baojinzhi").toNumber(),
                monitor.value(u"zhangfu").toNumber(), *gain);
    connection.execute(u"update zhutijiankong set zhangfu="_s + numberText(*gain) +
                       alarmTime(fires) + u" where zhutiname="_s + quoted(zhutiname));
    if (!fires) {
        return std::nullopt;
    }
    return promptOf(monitor, {FiredMonitor::Kind::theme, trimBlanks(zhutiname),
                              crossingWords(zhutiname, u"涨幅"_s, *gain, monitor)});
}

void AlarmEngine::judgeStocks(Connection& connection, Judgement& judgement) const {
    Recordset monitors(connection,
                       u"select  dm,jc,leixin,bijiaofu,baojinzhi,yinyue,tanchuform,sp,zhangfu from"
                       u" gegujiankong"_s);
    StockQuote quote;
    for (; !monitors.atEnd(); monitors.moveNext()) {
        judgement.add(monitors.value(u"dm").toText(),
                      [&] { return judgeStock(connection, monitors, quote); });
    }
}

// A monitor whose code is not in the poll list is judged by the quote of the one before it.
std::optional<AlarmEngine::Prompt> AlarmEngine::judgeStock(Connection& connection,
                                                           const Recordset& monitor,
                                                           StockQuote& quote) const {
    const QString dm = monitor.value(u"dm").toText();
    const Recordset row = pollListRow(connection, dm);
    if (!row.atEnd()) {
        quote = {row.value(u"sp").toNumber(), row.value(u"zhangfu").toNumber()};
    }
    const StockQuote old{monitor.value(u"sp").toNumber(), monitor.value(u"zhangfu").toNumber()};
    if (!(quote.sp > 0)) {
        return std::nullopt;
    }
    const QString leixin = monitor.value(u"leixin").toText();
    const QString bijiaofu = monitor.value(u"bijiaofu").toText();
    const double baojinzhi = monitor.value(u"baojinzhi").toNumber();
    const bool fires =
        (leixin == u"涨幅"_s && crosses(bijiaofu, baojinzhi, old.zhangfu, quote.zhangfu)) ||
        (leixin == u"股价"_s && crosses(bijiaofu, baojinzhi, old.sp, quote.sp));
    connection.execute(u"update gegujiankong set sp="_s + numberText(quote.sp) + u",zhangfu="_s +
                       numberText(quote.zhangfu) + alarmTime(fires) + u" where dm="_s + quoted(dm));
    if (!fires) {
        return std::nullopt;
    }
    const double value = leixin == u"股价"_s ? quote.sp : quote.zhangfu;
    return promptOf(monitor, {FiredMonitor::Kind::stock, trimBlanks(dm),
                              crossingWords(stockName(monitor), leixin, value, monitor)});
}

QString AlarmEngine::alarmTime(bool fires) const {
    return fires ? u",baojintime="_s + quoted(timeText(clock_.now())) : QString();
}

AlarmEngine::Prompt AlarmEngine::promptOf(const Recordset& row, FiredMonitor monitor) {
    const Value& tanchuform = row.value(u"tanchuform");
    const QString yinyue = row.value(u"yinyue").toText();
    return {std::move(monitor), !tanchuform.isNull() && tanchuform.toNumber() > 0,
            yinyue.size() > 1 ? yinyue : QString()};
}

}  // namespace guanchao
