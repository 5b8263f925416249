#include "market/quote_run.h"

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QuoteRun::QuoteRun(const Stores& stores, const Clock& clock, QuoteFeed& feed, EventPump& pump)
    : stores_(stores),
      clock_(clock),
      feed_(feed),
      run_(pump, u"正在更新行情，请等它完成。"_s, [] {}) {}

bool QuoteRun::run(const Report& report) {
    return update(u"select dm,jc from dmb "_s, report);
}

bool QuoteRun::gengxinquanbu(const Report& report) {
    return update(
        u"select dm,jc from dmb where dm!='SH000001' AND dm!='SH000300' and dm!='SZ399001'"_s,
        report);
}

bool QuoteRun::update(const QString& codesQuery, const Report& report) {
    return run_.run([&] {
        run_.letEventsHappen();
        const Activity activity(u"更新行情数据"_s, u"读到的行情已经写入并保留，出错的没有写入。"_s);
        Connection connection = stores_.main.open();
        Recordset codes(connection, codesQuery);
        const FirstFailure<RefusedLines> refusal = updateBatches(codes, report);
        connection.execute(u"update tempcanshu set hqtime='"_s + timeText(clock_.now()) + u"'"_s);
        refusal.raise();
    });
}

// The feed lets no events run after a failed request; the window stays painted all the same. Gives
// the first refusal of lines back: the market goes on without them.
FirstFailure<RefusedLines> QuoteRun::updateBatches(Recordset& codes, const Report& report) {
    FirstFailure<RefusedLines> refusal;
    QuoteProgress progress{0, codes.count(), {}};
    report(progress);
    for (const CodeBatch& batch : codeBatches(codes)) {
        refusal.attempt([&] { feed_.gengxinhq(batch.list, 0); });
        if (batch.count == codesPerRequest) {
            progress.updated += batch.count;
            progress.words = u"已更新股票只数:"_s + QString::number(progress.updated);
            report(progress);
        }
        run_.letEventsHappen();
    }
    return refusal;
}

}  // namespace guanchao
