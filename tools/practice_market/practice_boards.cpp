#include "tools/practice_market/practice_boards.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>

#include "formats/gbk.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostRowsOfEastmoney = 100;

QString marketOf(const QString& code) {
    if (code.startsWith(u"SH688"_s)) {
        return u"科创板"_s;
    }
    if (isOfShanghai(code)) {
        return u"沪市主板"_s;
    }
    return code.startsWith(u"SZ30"_s) ? u"创业板"_s : u"深市主板"_s;
}

QStringList pageOf(const QStringList& rows, int page, int size) {
    return rows.mid(qsizetype{page - 1} * size, size);
}

}  // namespace

PracticeBoards::PracticeBoards(const std::vector<PracticeStock>& stocks,
                               const QList<QStringList>& memberships)
    : sorts_{{u"class"_s, u"t:3"_s, {}}, {u"industry"_s, u"t:2"_s, {}}, {u"area"_s, u"t:1"_s, {}}} {
    QMap<QString, QStringList> markets;
    QMap<QString, QStringList> exchanges;
    for (const PracticeStock& it : stocks) {
        if (isOfBeijing(it.code)) {
            names_[it.code] = it.name;
            exchanges[u"北京"_s] << it.code;
        } else if (isStockCode(it.code)) {
            names_[it.code] = it.name;
            markets[marketOf(it.code)] << it.code;
            exchanges[isOfShanghai(it.code) ? u"上海"_s : u"深圳"_s] << it.code;
        }
    }
    QMap<QString, QStringList> themes;
    for (const QStringList& row : memberships) {
        if (names_.contains(row[1])) {
            themes[row[0]] << row[1];
        }
    }
    add(sorts_[0], u"gn_"_s, themes);
    add(sorts_[1], u"hangye_"_s, markets);
    add(sorts_[2], u"diyu_"_s, exchanges);
}

void PracticeBoards::add(Sort& sort, const QString& prefix,
                         const QMap<QString, QStringList>& boards) {
    for (auto it = boards.cbegin(); it != boards.cend(); ++it) {
        const QString number =
            u"%1%2"_s.arg(sort.eastmoney.back()).arg(sort.boards.size(), 4, 10, QChar(u'0'));
        QStringList codes = it.value();
        codes.sort();
        sort.boards << PracticeBoard{prefix + number, u"BK"_s + number, it.key(), codes};
    }
}

std::optional<QByteArray> PracticeBoards::reply(const QString& target) const {
    const QUrl url(target);
    const QUrlQuery query(url);
    const auto value = [&](const QString& name) { return query.queryItemValue(name); };
    if (url.path().endsWith(u"newFLJK.php"_s)) {
        return gbkFromText(sinaBoards(value(u"param"_s)));
    }
    if (url.path().endsWith(u"getHQNodeData"_s)) {
        return gbkFromText(
            sinaStocks(value(u"node"_s), value(u"page"_s).toInt(), value(u"num"_s).toInt()));
    }
    if (url.path().endsWith(u"getHQNodeStockCount"_s)) {
        return '"' + QByteArray::number(codesOf(value(u"node"_s)).size()) + '"';
    }
    if (url.path().endsWith(u"clist/get"_s)) {
        const int rows = std::min(value(u"pz"_s).toInt(), mostRowsOfEastmoney);
        return eastmoneyPage(value(u"fs"_s), value(u"pn"_s).toInt(), rows).toUtf8();
    }
    return std::nullopt;
}

QString PracticeBoards::sinaBoards(const QString& word) const {
    QStringList entries;
    for (const Sort& sort : sorts_) {
        for (const PracticeBoard& it : sort.sina == word ? sort.boards : QList<PracticeBoard>()) {
            entries << u"\"%1\":\"%1,%2,%3,20.00,0.10,0.50,1000000,20000000,sh600000,1.0,10.00,"
                       u"0.10,练习\""_s.arg(it.node, it.name)
                           .arg(it.codes.size());
        }
    }
    return u"var S_Finance_bankuai_%1 = {%2}"_s.arg(word, entries.join(u','));
}

QStringList PracticeBoards::stocksOf(bool ofBeijing) const {
    QStringList codes = names_.keys();
    codes.removeIf([&](const QString& it) { return isOfBeijing(it) != ofBeijing; });
    return codes;
}

// The node hs_a has all stocks of Shanghai and Shenzhen, hs_bjs those of Beijing.
QStringList PracticeBoards::codesOf(const QString& node) const {
    if (node == u"hs_a"_s || node == u"hs_bjs"_s) {
        return stocksOf(node == u"hs_bjs"_s);
    }
    QStringList codes;
    for (const Sort& sort : sorts_) {
        for (const PracticeBoard& it : sort.boards) {
            codes << (it.node == node ? it.codes : QStringList());
        }
    }
    return codes;
}

QString PracticeBoards::sinaStocks(const QString& node, int page, int rows) const {
    QStringList entries;
    for (const QString& code : pageOf(codesOf(node), page, rows)) {
        entries << u"{symbol:\"%1\",code:\"%2\",name:\"%3\",trade:\"10.00\",changepercent:0.5}"_s
                       .arg(code.toLower(), code.right(codeDigits), names_[code]);
    }
    return u'[' + entries.join(u',') + u']';
}

QString PracticeBoards::eastmoneyStock(const QString& code) const {
    return u"{\"f12\":\"%1\",\"f13\":%2,\"f14\":\"%3\"}"_s.arg(
        code.right(codeDigits), isOfShanghai(code) ? u"1"_s : u"0"_s, names_[code]);
}

// `wanted` is m:90+t:3 for boards, b:BK30001 for the stocks of one, a list of markets for all.
QString PracticeBoards::eastmoneyPage(const QString& wanted, int page, int rows) const {
    QStringList entries;
    for (const QString& code : wanted.contains(u"m:0+t:6"_s) ? stocksOf(false) : QStringList()) {
        entries << eastmoneyStock(code);
    }
    for (const QString& code : wanted.contains(u"m:0+t:81"_s) ? stocksOf(true) : QStringList()) {
        entries << eastmoneyStock(code);
    }
    for (const Sort& sort : sorts_) {
        for (const PracticeBoard& board : sort.boards) {
            if (wanted.endsWith(sort.eastmoney)) {
                entries << u"{\"f12\":\"%1\",\"f14\":\"%2\"}"_s.arg(board.key, board.name);
            }
            for (const QString& code :
                 wanted == u"b:"_s + board.key ? board.codes : QStringList()) {
                entries << eastmoneyStock(code);
            }
        }
    }
    const QStringList shown = pageOf(entries, page, rows);
    return shown.isEmpty()
               ? u"{\"rc\":0,\"data\":null}"_s
               : u"{\"rc\":0,\"data\":{\"total\":%1,\"diff\":[%2]}}"_s.arg(entries.size())
                     .arg(shown.join(u','));
}

}  // namespace guanchao
