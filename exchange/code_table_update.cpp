#include "exchange/code_table_update.h"

#include <QFileInfo>
#include <chrono>
#include <utility>

#include "base/time_left.h"
#include "base/values.h"
#include "base/worker.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString CodeTableResult::words() const {
    if (stopped) {
        return u"已停止，代码表没有改变。"_s;
    }
    if (!hasList) {
        return u"没有读到能用的名单，代码表没有改变：\n"_s + lacks.join(u'\n') + u'\n' +
               adviceOn(lacks, u"过一会儿再试"_s);
    }
    QString text =
        u"更新完成。%1的名单有 %2 只：新加入 %3 只，改名 %4 只，退市 %5 只，恢复 %6 只。"_s
            .arg(kindName(source))
            .arg(listed)
            .arg(changes.added.size())
            .arg(changes.renamed.size())
            .arg(changes.delisted.size())
            .arg(changes.back.size());
    if (!isWhole) {
        text += u"\n网站没有说一共有几只，或者给得不够数，这次不判断退市。"_s;
    }
    return text;
}

CodeTableUpdate::CodeTableUpdate(const Stores& stores, const Clock& clock, HttpClient& http,
                                 QList<Service> services, QString initialsPath, RunControl& control,
                                 Progress progress)
    : stores_(stores),
      now_(timeText(clock.now())),
      initialsPath_(std::move(initialsPath)),
      control_(control),
      progress_(std::move(progress)),
      list_(http, std::move(services)) {}

QCoro::Task<CodeTableResult> CodeTableUpdate::run(bool withBeijing, std::stop_token stop) {
    const std::stop_callback whenStopped(stop, [this] { control_.stop(); });
    RunNote note(u"更新代码表"_s, stop);
    try {
        co_await carryOut(withBeijing, stop);
    } catch (const Cancelled&) {
        result_.stopped = true;
    }
    endIfStopped(stop);
    noteEnd(note);
    co_return CodeTableResult(result_);
}

void CodeTableUpdate::noteEnd(RunNote& note) const {
    if (result_.hasList || result_.stopped) {
        note.ended(u"名单 %1 只"_s.arg(result_.listed), result_.stopped);
    } else {
        note.failed(result_.reason);
    }
}

QCoro::Task<> CodeTableUpdate::carryOut(bool withBeijing, std::stop_token stop) {
    const auto read = [stores = stores_](const auto&) { return readKnownCodes(stores); };
    const KnownCodes known = co_await inWorker(read, stop);
    progress_({u"正在问网站有哪些股票…"_s, 0, 0, {}});
    working_.goOn();
    const StockListFault faultOf = [=](const QList<ListedStock>& list) {
        return codeListFault(list, known, withBeijing);
    };
    const StockListProgress pages = [this](qsizetype stocks, std::optional<qsizetype> total) {
        showPages(stocks, total);
    };
    const StockListReply reply =
        co_await list_.fetch(withBeijing, faultOf, pages, control_.asking());
    result_.lacks = reply.lacks;
    result_.reason = reply.reason;
    result_.hasList = !reply.stocks.isEmpty();
    if (!result_.hasList) {
        co_return;
    }
    result_.listed = static_cast<int>(reply.stocks.size());
    result_.isWhole = reply.isWhole;
    result_.source = reply.service.kind;
    result_.changes = changesBy(reply.stocks, known, withBeijing, reply.isWhole);
    endIfStopped(control_.asking());
    co_await store(stop);
}

QCoro::Task<> CodeTableUpdate::store(std::stop_token stop) {
    progress_({u"正在写入代码表…"_s, result_.listed, result_.listed, {}});
    const auto write = [stores = stores_, changes = result_.changes, path = initialsPath_,
                        now = now_](const auto&) {
        const Initials initials(QFileInfo::exists(path) ? readInitialsExceptions(path)
                                                        : QHash<QString, QString>());
        storeChanges(stores, changes, initials, now);
        return true;
    };
    co_await inWorker(write, stop);
}

void CodeTableUpdate::showPages(qsizetype stocks, std::optional<qsizetype> total) {
    const int done = static_cast<int>(stocks);
    const int all = static_cast<int>(total.value_or(0));
    const QString step = total ? u"正在读取名单"_s : u"正在读取名单，已经有 %1 只"_s.arg(done);
    progress_({step, done, all, timeLeftWords(working_.elapsed(), done, all)});
}

}  // namespace guanchao
