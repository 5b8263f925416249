#include "market/stored_quote.h"

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int decimals = 4;
constexpr qsizetype longestShown = 20;  // of what a refusal shows
constexpr qsizetype lastFieldOfNoQuote = 3;

void computeGain(StoredQuote& quote, double latest, double formerClose) {
    if (latest <= 0) {
        return;
    }
    if (formerClose == 0) {
        throw OperationError(u"行情数据的昨收盘为0："_s + quote.dm);
    }
    quote.zhangjine = roundTo(latest - formerClose, decimals);
    quote.zhangfu = roundTo(100 * (latest - formerClose) / formerClose, decimals);
}

// The time is the last field that is read, although only the local clock dates the row: a line that
// ends before it broke off on the way.
void requireWhole(const QuoteRow& row) {
    if (row.dm().isEmpty()) {
        QString beginning = row.beginning().toString();
        throw OperationError(u"行情数据中没有代码："_s +
                             beginning.remove(u'"').trimmed().left(longestShown));
    }
    if (row.lastIndex() < field::time) {
        throw OperationError(u"行情数据不完整："_s + row.dm());
    }
}

// The text goes into a statement as it stands: it must be a number and nothing beside it.
QString figureAsSent(const QuoteRow& row, qsizetype position) {
    if (row.number(position) < 0) {
        throw OperationError(u"行情数据的第"_s + QString::number(position + 1) +
                             u"个字段是负数："_s + row.dm() + u' ' + row.text(position));
    }
    return row.numberAsSent(position);
}

}  // namespace

bool isUnknownCode(const QuoteRow& row) {
    return !row.dm().isEmpty() && row.beginning().trimmed().endsWith(u"=\"\"");
}

bool hasQuote(const QuoteRow& row) {
    return !isUnknownCode(row) && (!row.dm().isEmpty() || row.lastIndex() > lastFieldOfNoQuote);
}

StoredQuote storedQuote(const QuoteRow& row) {
    requireWhole(row);
    StoredQuote quote;
    quote.dm = row.dm();
    quote.kp = figureAsSent(row, field::open);
    quote.sp = figureAsSent(row, field::latest);
    quote.zg = figureAsSent(row, field::high);
    quote.zd = figureAsSent(row, field::low);
    quote.totalsl = figureAsSent(row, field::volume);
    quote.totaljine = figureAsSent(row, field::amount);
    computeGain(quote, row.number(field::latest), row.number(field::formerClose));
    return quote;
}

QString updateCodeTable(const StoredQuote& quote, const QString& now) {
    return u"update dmb set sp="_s + quote.sp + u",zhangfu="_s + numberText(quote.zhangfu) +
           u",zhangjine="_s + numberText(quote.zhangjine) + u",kp="_s + quote.kp + u",zg="_s +
           quote.zg + u",zd="_s + quote.zd + u",totalsl="_s + quote.totalsl + u",totaljine="_s +
           quote.totaljine + u",newhqtime="_s + quoted(now) + u" where dm="_s + quoted(quote.dm);
}

QString updatePollList(const StoredQuote& quote, const QString& now) {
    return u"update jiankonghq set sp="_s + quote.sp + u",zhangfu="_s + numberText(quote.zhangfu) +
           u",zhangjine="_s + numberText(quote.zhangjine) + u",totalsl="_s + quote.totalsl +
           u",totaljine="_s + quote.totaljine + u",newhqtime="_s + quoted(now) + u" where dm="_s +
           quoted(quote.dm);
}

}  // namespace guanchao
