#include "market/fundamentals.h"

#include <QStringList>

#include "market/quote_figures.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype fewestItems = 3;

// What stands between the braces of the block, without its double quotes; empty if a mark or a
// brace is missing.
QString blockOf(const QString& page) {
    const qsizetype begin = page.indexOf(u"var stockF10ZxzbJson ="_s);
    const qsizetype end = begin < 0 ? -1 : page.indexOf(u"var stockDstx ="_s, begin);
    if (end < 0) {
        return {};
    }
    QString block = page.sliced(begin, end - begin);
    block.remove(u'"');
    const qsizetype open = block.indexOf(u'{');
    const qsizetype close = open < 0 ? -1 : block.indexOf(u'}', open);
    return close < 0 ? QString() : block.sliced(open + 1, close - open - 1);
}

}  // namespace

double Fundamentals::floatInTenThousands() const {
    return marketFigure(mqlt).value_or(0) * 10000;
}

double Fundamentals::netAssets() const {
    return marketFigure(mgjzc).value_or(0);
}

Fundamentals readFundamentals(const QString& page) {
    Fundamentals fundamentals;
    const QStringList items = blockOf(page).split(u',');
    if (items.size() < fewestItems) {
        return fundamentals;
    }
    for (const QString& item : items) {
        const QStringList words = item.split(u':');
        if (words.size() < 2) {
            continue;
        }
        if (words[0] == u"jzrq") {
            fundamentals.jzrq = dayAsTimeText(words[1]);
        } else if (words[0] == u"mqlt") {
            fundamentals.mqlt = words[1];
        } else if (words[0] == u"mgsy") {
            fundamentals.mgsy = words[1];
        } else if (words[0] == u"mgjzc") {
            fundamentals.mgjzc = words[1];
        }
    }
    return fundamentals;
}

QString fundamentalsPath(const QString& dm) {
    return u"/news/stock/600000.shtml"_s.replace(u"600000"_s, dm.right(codeDigits));
}

FundamentalTexts fundamentalTexts(const Fundamentals& fundamentals) {
    return {fundamentals.jzrq, fundamentals.mqlt + u"（亿）"_s, fundamentals.mgsy + u"（元）"_s,
            fundamentals.mgjzc + u"（元）"_s};
}

}  // namespace guanchao
