#include "research/refused_condition.h"

#include <QRegularExpression>
#include <optional>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What the library says of a part, and what that means.
struct Kind {
    QRegularExpression pattern;
    QString words;
};

const QList<Kind>& kinds() {
    static const QList<Kind> all = {
        {QRegularExpression(u"no such column: (\\S+)"_s), u"没有“%1”这一列。"_s},
        {QRegularExpression(u"no such function: (\\S+)"_s), u"没有“%1”这个函数。"_s},
        {QRegularExpression(u"ambiguous column name: (\\S+)"_s),
         u"两个表都有“%1”，请写成 xuanticai.%1 或 xuanticaigu.%1。"_s},
        {QRegularExpression(u"(?:near|unrecognized token:) \"(.*)\""_s,
                            QRegularExpression::DotMatchesEverythingOption),
         u"“%1”这里读不通。"_s}};
    return all;
}

bool isWord(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

// Inside a longer word it is another one.
std::optional<TextPart> placeOf(const QString& part, const QString& condition) {
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

// The innermost quote or bracket that is left open, up to the end; the statement then goes wrong
// behind the condition only.
std::optional<Refusal> leftOpen(const QString& condition) {
    QList<qsizetype> brackets;
    std::optional<qsizetype> quote;
    for (qsizetype at = 0; at < condition.size(); ++at) {
        const QChar c = condition[at];
        if (quote) {
            quote = c == condition[*quote] ? std::nullopt : quote;
        } else if (c == u'\'' || c == u'"') {
            quote = at;
        } else if (c == u'(') {
            brackets << at;
        } else if (c == u')' && !brackets.isEmpty()) {
            brackets.removeLast();
        }
    }
    if (quote) {
        return Refusal{{*quote, condition.size() - *quote}, u"引号没有配对。"_s};
    }
    if (!brackets.isEmpty()) {
        const qsizetype first = brackets.last();
        return Refusal{{first, condition.size() - first}, u"括号没有配对。"_s};
    }
    return std::nullopt;
}

bool beginsWithAnd(const QString& condition) {
    static const QRegularExpression joint(u"^\\s*(?:and|or)\\b"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return condition.trimmed().isEmpty() || joint.match(condition).hasMatch();
}

}  // namespace

Refusal refusalOf(QString condition, const QString& reason) {
    condition.remove(u'\r');
    if (const std::optional<Refusal> open = leftOpen(condition)) {
        return *open;
    }
    if (!beginsWithAnd(condition)) {
        return {{0, condition.size()}, u"条件要以 and 开头。"_s};
    }
    for (const Kind& kind : kinds()) {
        const QString part = kind.pattern.match(reason).captured(1).remove(u'\r');
        if (const std::optional<TextPart> place = placeOf(part, condition)) {
            return {*place, kind.words.arg(condition.mid(place->first, place->length))};
        }
    }
    return {{0, condition.size()}, u"这个条件不能用在搜索里，它只能是接在后面的比较。"_s};
}

RefusedCondition::RefusedCondition(const QString& condition, const StoreError& refused)
    : RefusedCondition(refusalOf(condition, refused.reason()), refused) {}

RefusedCondition::RefusedCondition(const Refusal& refusal, const StoreError& refused)
    : StoreError(refusal.words, refused.path(), refused.statement(), StoreFault::condition),
      part_(refusal.part) {}

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
