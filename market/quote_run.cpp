#include "market/quote_run.h"

#include <algorithm>
#include <numeric>

#include "base/values.h"
#include "services/delisted.h"
#include "services/service_names.h"
#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

Activity updating() {
    return Activity(u"更新行情数据"_s, u"读到的行情已经写入并保留，出错的没有写入。"_s);
}

int stocksIn(const QList<CodeBatch>& batches) {
    return std::transform_reduce(batches.cbegin(), batches.cend(), 0, std::plus(),
                                 [](const CodeBatch& batch) { return batch.count; });
}

QString reasonWords(int count, const QString& reason) {
    return u"%1只：%2"_s.arg(count).arg(reason);
}

}  // namespace

QString QuoteProgress::words() const {
    return asked == 0 ? QString() : u"已更新股票只数:%1"_s.arg(updated);
}

QString QuoteProgress::stoppedWords() const {
    return u"已停止：更新了 %1 只股票的行情，共 %2 只"_s.arg(updated).arg(total);
}

void QuoteTally::add(const MissedQuotes& missed) {
    missed_ += missed.count;
    unknown_ += missed.unknown;
    if (!missed.reason.isEmpty()) {
        byReason_[missed.reason] += missed.count;
    }
    refusals_ << missed.refusals;
}

QString QuoteTally::heading() const {
    if (failed()) {
        return u"没有读到行情，行情更新时间没有改变。"_s;
    }
    if (unanswered() == 0) {
        return u"更新行情数据完成！"_s;
    }
    return u"更新了 %1 只股票的行情，共 %2 只，没有更新的有 %3 只："_s.arg(total_ - missed_)
        .arg(total_)
        .arg(missed_);
}

QString QuoteTally::reason() const {
    const auto most = std::ranges::max_element(byReason_);
    return most == byReason_.end() ? u"应答里没有这些代码"_s : most.key();
}

QString QuoteTally::counts() const {
    return u"%1 / %2 只"_s.arg(total_ - unanswered()).arg(total_);
}

QString QuoteTally::words() const {
    QStringList lines = {heading()};
    int omitted = unanswered();
    for (auto it = byReason_.cbegin(); it != byReason_.cend(); ++it) {
        lines << reasonWords(it.value(), it.key());
        omitted -= it.value();
    }
    // A line of a code that nobody has asked for keeps no stock from its quote.
    const int refused = std::min(static_cast<int>(refusals_.size()), omitted);
    if (refused > 0) {
        lines << reasonWords(refused, u"读不出（"_s + refusals_.first() + u"）"_s);
        omitted -= refused;
    }
    if (unknown_ > 0) {
        lines << reasonWords(unknown_, u"服务没有这只股票"_s);
    }
    if (omitted > 0) {
        lines << reasonWords(omitted, u"应答里没有这些代码"_s);
    }
    if (!byReason_.isEmpty()) {
        lines << adviceOn(byReason_.keys(), u"过一会儿再更新"_s);
    }
    lines.removeAll(QString());
    return lines.join(u'\n');
}

QCoro::Task<QuoteTally> QuoteRun::run(Report report, std::stop_token stop) {
    return update(u"1"_s, report, stop);
}

QCoro::Task<QuoteTally> QuoteRun::gengxinquanbu(Report report, std::stop_token stop) {
    return update(u"dm!='SH000001' AND dm!='SH000300' and dm!='SZ399001'"_s, report, stop);
}

QCoro::Task<QuoteTally> QuoteRun::update(QString condition, Report report, std::stop_token stop) {
    const auto read = [=, this] { return readBatches(condition); };
    const QList<CodeBatch> batches = co_await patiently(read, stop);
    const QuoteTally tally = co_await updateBatches(batches, report, stop);
    if (!tally.nothingCame()) {
        co_await patiently([this] { storeTime(); }, stop);
    }
    co_return tally;
}

QCoro::Task<QuoteTally> QuoteRun::updateBatches(QList<CodeBatch> batches, Report report,
                                                std::stop_token stop) {
    QuoteProgress progress{0, 0, stocksIn(batches)};
    QuoteTally tally(progress.total);
    report(progress);
    const QuoteFeed::Note note = [&](const CodeBatch& batch, const MissedQuotes& missed) {
        tally.add(missed);
        progress.asked += batch.count;
        progress.updated = progress.asked - tally.unanswered();
        report(progress);
    };
    co_await feed_.gengxinhq(batches, 0, note, stop);
    co_return tally;
}

QList<CodeBatch> QuoteRun::readBatches(const QString& condition) const {
    const Activity activity = updating();
    Connection connection = stores_.main.open();
    Recordset codes(connection, u"select dm,jc from dmb where dm not in "_s +
                                    delistedCodes(connection) + u" and "_s + condition);
    return codeBatches(codes);
}

void QuoteRun::storeTime() {
    const Activity activity = updating();
    Connection connection = stores_.main.open();
    connection.execute(u"update tempcanshu set hqtime="_s + quoted(timeText(clock_.now())));
}

}  // namespace guanchao
