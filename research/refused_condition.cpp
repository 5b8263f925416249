#include "research/refused_condition.h"

#include <QRegularExpression>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// near "x": syntax error; unrecognized token: "x"; no such column: x; no such function: x;
// ambiguous column name: x
QString namedPart(const QString& reason) {
    static const QRegularExpression quotedPart(u"(?:near|unrecognized token:) \"(.*)\""_s,
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression lastWord(
        u"(?:no such (?:column|function)|ambiguous column name): (\\S+)"_s);
    for (const QRegularExpression& pattern : {quotedPart, lastWord}) {
        const QRegularExpressionMatch match = pattern.match(reason);
        if (match.hasMatch()) {
            return match.captured(1);
        }
    }
    return {};
}

bool isWord(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

}  // namespace

// Inside a longer word it is another one.
std::optional<TextPart> refusedPart(const QString& condition, const QString& reason) {
    const QString part = namedPart(reason);
    if (part.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype length = part.size();
    qsizetype at = condition.indexOf(part, 0, Qt::CaseInsensitive);
    while (at >= 0) {
        const bool begins = at == 0 || !isWord(part.front()) || !isWord(condition[at - 1]);
        const qsizetype end = at + length;
        const bool ends =
            end == condition.size() || !isWord(part.back()) || !isWord(condition[end]);
        if (begins && ends) {
            return TextPart{at, length};
        }
        at = condition.indexOf(part, at + 1, Qt::CaseInsensitive);
    }
    return std::nullopt;
}

const QStringList& conditionColumns() {
    static const QStringList columns = {
        u"题材涨"_s,     u"大盘涨"_s,    u"总个数"_s,      u"涨停数"_s,  u"一字数"_s,
        u"股涨幅"_s,     u"量比"_s,      u"开盘涨"_s,      u"前3涨"_s,   u"前10涨"_s,
        u"前30涨"_s,     u"后1涨"_s,     u"后2涨"_s,       u"后5涨"_s,   u"后10涨"_s,
        u"后1量比"_s,    u"后2开盘"_s,   u"dm"_s,          u"jc"_s,      u"ticaizhang"_s,
        u"dapanzhang"_s, u"zonggeshu"_s, u"zhangtinshu"_s, u"yizishu"_s, u"touguzhangfu"_s,
        u"fuquankp"_s,   u"fuquansp"_s,  u"sp"_s,          u"zg"_s,      u"qian1sp"_s,
        u"qian3sp"_s,    u"qian10sp"_s,  u"qian30sp"_s,    u"chengjl"_s, u"chengjl10ri"_s,
        u"hou1kp"_s,     u"hou2kp"_s,    u"hou1sp"_s,      u"hou2sp"_s,  u"hou5sp"_s,
        u"hou10sp"_s,    u"hou1liang"_s};
    return columns;
}

}  // namespace guanchao
