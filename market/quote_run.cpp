#include "market/quote_run.h"

#include <QScopeGuard>

#include "store/store_error.h"
#include "store/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QuoteRun::QuoteRun(const Stores& stores, const Clock& clock, QuoteFeed& feed, EventPump& pump)
    : stores_(stores), clock_(clock), feed_(feed), pump_(pump) {}

bool QuoteRun::run(const Report& report) {
    return update(u"select dm,jc from dmb "_s, report);
}

bool QuoteRun::gengxinquanbu(const Report& report) {
    return update(
        u"select dm,jc from dmb where dm!='SH000001' AND dm!='SH000300' and dm!='SZ399001'"_s,
        report);
}

bool QuoteRun::update(const QString& codesQuery, const Report& report) {
    if (running_) {
        return false;
    }
    running_ = true;
    cancelled_ = false;
    const auto end = qScopeGuard([this] { running_ = false; });
    pump_.runPendingEvents();
    if (cancelled_) {
        return false;
    }
    const Activity activity(u"更新行情数据"_s,
                            u"此前各批行情已经写入并保留，出错的这一批没有写入。"_s);
    Connection connection = stores_.main.open();
    Recordset codes(connection, codesQuery);
    if (!updateBatches(codes, report)) {
        return false;
    }
    connection.execute(u"update tempcanshu set hqtime='"_s + timeText(clock_.now()) + u"'"_s);
    return true;
}

bool QuoteRun::updateBatches(Recordset& codes, const Report& report) {
    QuoteProgress progress{0, codes.count()};
    report(progress);
    QString list;
    int batch = 0;
    for (; !codes.atEnd(); codes.moveNext()) {
        ++batch;
        list += codes.value(u"dm").toText().toLower() + u',';
        if (batch < codesPerRequest) {
            continue;
        }
        feed_.gengxinhq(list, 0);
        progress.updated += batch;
        list.clear();
        batch = 0;
        report(progress);
        // The feed lets no events run after a failed request; the window stays painted all the
        // same.
        pump_.runPendingEvents();
        if (cancelled_) {
            return false;
        }
    }
    if (batch > 0) {
        feed_.gengxinhq(list, 0);
    }
    return !cancelled_;
}

}  // namespace guanchao
