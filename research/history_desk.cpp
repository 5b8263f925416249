#include "research/history_desk.h"

#include <QScopeGuard>
#include <QSettings>
#include <algorithm>
#include <utility>

#include "base/run_note.h"
#include "services/service_names.h"
#include "services/trading_day.h"
#include "store/failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int standardYears = 10;
// The services need a while after the close.
const QTime updateTime(15, 30);

const QString yearsKey = u"历史行情/年数"_s;
const QString updatesKey = u"历史行情/收盘后自动更新"_s;

// A host that serves several purposes stands in one line.
void addLines(const QString& purpose, const QList<Service>& services, const ServiceWatch& watch,
              QStringList& lines) {
    for (const Service& service : services) {
        const QString state = u' ' + lineOn(service, stateWords(service, watch.stateOf(service)));
        const auto same =
            std::ranges::find_if(lines, [&](const QString& line) { return line.endsWith(state); });
        if (same == lines.end()) {
            lines << purpose + state;
        } else {
            same->insert(same->size() - state.size(), u'、' + purpose);
        }
    }
}

}  // namespace

HistoryDesk::HistoryDesk(const Stores& stores, const Clock& clock, ServiceWatch& watch,
                         const Services& services, Failures& failures, QString iniPath)
    : stores_(stores),
      clock_(clock),
      watch_(watch),
      services_(services),
      iniPath_(std::move(iniPath)),
      looks_(clock, [this] { look(); }),
      runs_(failures) {
    looks_.setObjectName(u"historyLooks"_s);
    looks_.setParent(this);
}

void HistoryDesk::start() {
    looks_.begin();
}

int HistoryDesk::years() const {
    const int years =
        QSettings(iniPath_, QSettings::IniFormat).value(yearsKey, standardYears).toInt();
    return std::clamp(years, 1, mostYears);
}

void HistoryDesk::setYears(int years) {
    QSettings(iniPath_, QSettings::IniFormat).setValue(yearsKey, years);
}

bool HistoryDesk::updatesByItself() const {
    return QSettings(iniPath_, QSettings::IniFormat).value(updatesKey, false).toBool();
}

void HistoryDesk::setUpdatesByItself(bool wanted) {
    QSettings(iniPath_, QSettings::IniFormat).setValue(updatesKey, wanted);
}

QStringList HistoryDesk::serviceLines() const {
    QStringList lines;
    addLines(u"历史行情"_s, services_.history, watch_, lines);
    addLines(u"复权因子"_s, services_.factors, watch_, lines);
    addLines(u"行情"_s, services_.quote, watch_, lines);
    return lines;
}

// A day without trading, which nobody tells in advance, is asked for in vain once an hour.
void HistoryDesk::look() {
    const QDateTime now = clock_.now();
    const bool isOver = isWeekday(now.date()) && now.time() >= updateTime;
    if (isOver && updated_ != now.date() && updatesByItself()) {
        begin({.years = years(), .onlyNewDays = true});
    }
}

void HistoryDesk::fill() {
    begin({.years = years()});
}

void HistoryDesk::begin(FillWish wish) {
    if (!runs_.running()) {
        runs_.start([this, wish](std::stop_token stop) { return run(wish, stop); });
    }
}

// A failure is told where the fill is shown, in no box: nobody may be there.
QCoro::Task<> HistoryDesk::run(FillWish wish, std::stop_token stop) {
    control_ = std::make_unique<RunControl>();
    shown_ = ShownFill();
    shown_.running = true;
    emit changed();
    const auto end = qScopeGuard([this] {
        shown_.running = shown_.paused = shown_.stopping = false;
        if (const auto ended = std::exchange(ended_, nullptr)) {
            ended->deliver(true);
        }
        emit changed();
        emit settled();
    });
    const auto show = [this](const RunProgress& progress) {
        shown_.progress = progress;
        emit changed();
    };
    HistoryFill fill(stores_, clock_, watch_, services_, wish, *control_, show);
    RunNote note(u"补全历史行情"_s, stop);
    try {
        const FillTally tally = co_await fill.run(stop);
        note.ended(tally.counts(), tally.stopped);
        shown_.words = tally.words();
        noteUpdate(tally);
    } catch (const std::exception& failure) {
        shown_.words = failureText(failure);
        looks_.noteFailure();
    }
}

void HistoryDesk::noteUpdate(const FillTally& tally) {
    const QDate today = clock_.now().date();
    const bool isWhole = tally.ending.isEmpty() && tally.lacking.isEmpty() && !tally.stopped;
    if (isWhole && tally.newestDay == today) {
        updated_ = today;
    } else {
        looks_.noteFailure();
    }
}

void HistoryDesk::pause() {
    if (shown_.running && !shown_.paused) {
        shown_.paused = true;
        control_->pause();
        emit changed();
    }
}

void HistoryDesk::goOn() {
    if (shown_.running && shown_.paused) {
        shown_.paused = false;
        control_->goOn();
        emit changed();
    }
}

void HistoryDesk::stop() {
    if (shown_.running && !shown_.stopping) {
        shown_.stopping = true;
        emit changed();
        control_->stop();
    }
}

QCoro::Task<> HistoryDesk::end(std::stop_token stop) {
    looks_.stop();
    if (shown_.running) {
        const auto ended = std::make_shared<Later<bool>>();
        ended_ = ended;
        this->stop();
        co_await ended->orStop(stop);
    }
}

}  // namespace guanchao
