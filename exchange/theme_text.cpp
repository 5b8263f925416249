#include "exchange/theme_text.h"

#include <QList>
#include <algorithm>

#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longestName = 20;

struct Separator {
    QString entry;
    QString text;
};

// The two semicolon entries stand for colons: the label says 分号, the value is a colon.
const QList<Separator>& separators() {
    static const QList<Separator> all = {{u"TAB键"_s, u"\t"_s},     {u"空格"_s, u" "_s},
                                         {u"英文逗号,"_s, u","_s},  {u"中文逗号，"_s, u"，"_s},
                                         {u"英文分号:"_s, u":"_s},  {u"中文分号："_s, u"："_s},
                                         {u"中文顿号、"_s, u"、"_s}};
    return all;
}

// A prefix of mixed case doesn't count here.
bool hasPlainExchange(const QString& code) {
    const QString exchange = code.left(2);
    return hasExchange(code) && (exchange == exchange.toUpper() || exchange == exchange.toLower());
}

}  // namespace

QStringList separatorEntries() {
    QStringList entries;
    for (const Separator& it : separators()) {
        entries << it.entry;
    }
    return entries;
}

QString separatorOf(const QString& entry) {
    for (const Separator& it : separators()) {
        if (it.entry == entry) {
            return it.text;
        }
    }
    return entry;
}

std::optional<LineParts> splitLine(const QString& line, const QString& separator) {
    const qsizetype at = line.indexOf(separator);
    if (at < 0) {
        return std::nullopt;
    }
    return LineParts{line.left(at), trimBlanks(line.sliced(at + 1))};
}

QStringList splitPieces(const QString& second, const QString& separator) {
    QStringList pieces;
    if (second.isEmpty()) {
        return pieces;
    }
    for (const QString& piece : second.split(separator)) {
        pieces << trimBlanks(piece);
    }
    return pieces;
}

NormalCode normaliseCode(const QString& code) {
    NormalCode normal{code, false};
    if (code.size() > codeLength) {
        normal.code = code.left(hasPlainExchange(code) ? codeLength : codeDigits);
    }
    const QChar first = normal.code.isEmpty() ? QChar() : normal.code.front();
    normal.wellFormed = first == u'6' || first == u'3' || first == u'0' || hasExchange(normal.code);
    if (normal.wellFormed && normal.code.size() == codeDigits) {
        normal.code.prepend(exchangeOf(normal.code));
    }
    return normal;
}

bool isDigitsOnly(const QString& name) {
    return !name.isEmpty() &&
           std::all_of(name.begin(), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isTooLong(const QString& name) {
    return name.size() > longestName;
}

bool canNameTheme(const QString& name) {
    return !name.isEmpty() && !isDigitsOnly(name) && !isTooLong(name);
}

}  // namespace guanchao
