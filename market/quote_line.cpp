#include "market/quote_line.h"

#include <QVarLengthArray>

#include "base/activity.h"
#include "base/values.h"
#include "market/quote_fields.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int codeLength = 8;
constexpr int decimals = 4;
constexpr int usualFields = 40;
constexpr qsizetype longestShown = 20;  // of what a refusal shows

using Fields = QVarLengthArray<QStringView, usualFields>;

// The name in front of the first field is its variable.
constexpr qsizetype variable = 0;

QString codeOf(QString variableField) {
    variableField.remove(u'"');
    const qsizetype equals = variableField.indexOf(u'=');
    if (equals < codeLength) {
        throw OperationError(u"行情数据中没有代码："_s +
                             variableField.trimmed().left(longestShown));
    }
    return variableField.sliced(equals - codeLength, codeLength).toUpper();
}

// The text of a field goes into a statement as it stands: it must be a number and nothing beside
// it.
QString numberIn(const Fields& fields, qsizetype position, const QString& dm) {
    const QStringView text = fields[position].trimmed();
    if (!marketFigure(text)) {
        throw OperationError(u"行情数据的第"_s + QString::number(position + 1) +
                             u"个字段不是数字："_s + dm + u' ' + text.left(longestShown));
    }
    return text.toString();
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
    Fields fields;
    for (const QStringView text : piece.tokenize(u',')) {
        fields.append(text);
    }
    if (fields.size() - 1 <= 3) {
        return std::nullopt;
    }
    QuoteLine line;
    line.dm = codeOf(fields[variable].toString());
    // The time is the last field that is read, although only the local clock dates the row: a line
    // that ends before it broke off on the way.
    if (fields.size() <= field::time) {
        throw OperationError(u"行情数据不完整："_s + line.dm);
    }
    line.kp = numberIn(fields, field::open, line.dm);
    line.sp = numberIn(fields, field::latest, line.dm);
    line.zg = numberIn(fields, field::high, line.dm);
    line.zd = numberIn(fields, field::low, line.dm);
    line.totalsl = numberIn(fields, field::volume, line.dm);
    line.totaljine = numberIn(fields, field::amount, line.dm);
    const QString formerClose = numberIn(fields, field::formerClose, line.dm);
    computeGain(line, numericPrefix(line.sp), numericPrefix(formerClose));
    return line;
}

QString updateCodeTable(const QuoteLine& line, const QString& now) {
    return u"update dmb set sp="_s + line.sp + u",zhangfu="_s + numberText(line.zhangfu) +
           u",zhangjine="_s + numberText(line.zhangjine) + u",kp="_s + line.kp + u",zg="_s +
           line.zg + u",zd="_s + line.zd + u",totalsl="_s + line.totalsl + u",totaljine="_s +
           line.totaljine + u",newhqtime='"_s + now + u"' where dm='"_s + zhuanyisql(line.dm) +
           u"'"_s;
}

QString updatePollList(const QuoteLine& line, const QString& now) {
    return u"update jiankonghq set sp="_s + line.sp + u",zhangfu="_s + numberText(line.zhangfu) +
           u",zhangjine="_s + numberText(line.zhangjine) + u",totalsl="_s + line.totalsl +
           u",totaljine="_s + line.totaljine + u",newhqtime='"_s + now + u"' where dm='"_s +
           zhuanyisql(line.dm) + u"'"_s;
}

}  // namespace guanchao
