#include "market/quote_line.h"

#include <QVarLengthArray>

#include "store/store_error.h"
#include "store/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int codeLength = 8;
constexpr int decimals = 4;
constexpr int usualFields = 40;

// The service's fields by position; the name in front of field 0 is its variable.
enum Field { variable = 0, open = 1, formerClose = 2, last = 3, high = 4, low = 5 };
enum LaterField { volume = 8, turnover = 9, day = 30, time = 31 };

QString codeOf(QString variableField) {
    variableField.remove(u'"');
    const qsizetype equals = variableField.indexOf(u'=');
    if (equals < codeLength) {
        throw OperationError(u"行情数据中没有代码："_s + variableField);
    }
    return variableField.sliced(equals - codeLength, codeLength).toUpper();
}

void computeGain(QuoteLine& line, double lastPrice, double close) {
    if (lastPrice <= 0) {
        return;
    }
    if (close == 0) {
        throw OperationError(u"行情数据的昨收盘为0："_s + line.dm);
    }
    line.zhangjine = roundTo(lastPrice - close, decimals);
    line.zhangfu = roundTo(100 * (lastPrice - close) / close, decimals);
}

}  // namespace

std::optional<QuoteLine> readQuoteLine(QStringView piece) {
    QVarLengthArray<QStringView, usualFields> fields;
    for (const QStringView field : piece.tokenize(u',')) {
        fields.append(field);
    }
    if (fields.size() - 1 <= 3) {
        return std::nullopt;
    }
    QuoteLine line;
    line.dm = codeOf(fields[variable].toString());
    // The time is the last field that is read, although only the local clock dates the row: a line
    // that ends before it broke off on the way.
    if (fields.size() <= time) {
        throw OperationError(u"行情数据不完整："_s + line.dm);
    }
    line.kp = fields[open].toString();
    line.sp = fields[last].toString();
    line.zg = fields[high].toString();
    line.zd = fields[low].toString();
    line.totalsl = fields[volume].toString();
    line.totaljine = fields[turnover].toString();
    computeGain(line, numericPrefix(fields[last]), numericPrefix(fields[formerClose]));
    return line;
}

QString updateCodeTable(const QuoteLine& line, const QString& now) {
    return u"update dmb set sp="_s + line.sp + u",zhangfu="_s + numberText(line.zhangfu) +
           u",zhangjine="_s + numberText(line.zhangjine) + u",kp="_s + line.kp + u",zg="_s +
           line.zg + u",zd="_s + line.zd + u",totalsl="_s + line.totalsl + u",totaljine="_s +
           line.totaljine + u",newhqtime='"_s + now + u"' where dm='"_s + line.dm + u"'"_s;
}

QString updatePollList(const QuoteLine& line, const QString& now) {
    return u"update jiankonghq set sp="_s + line.sp + u",zhangfu="_s + numberText(line.zhangfu) +
           u",zhangjine="_s + numberText(line.zhangjine) + u",totalsl="_s + line.totalsl +
           u",totaljine="_s + line.totaljine + u",newhqtime='"_s + now + u"' where dm='"_s +
           line.dm + u"'"_s;
}

}  // namespace guanchao
