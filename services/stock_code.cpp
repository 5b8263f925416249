#include "services/stock_code.h"

#include <algorithm>

#include "base/values.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool isWholeCode(QStringView dm) {
    const auto isLetter = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return dm.size() == codeLength && std::ranges::all_of(dm.chopped(codeDigits), isLetter) &&
           std::ranges::all_of(dm.last(codeDigits), isDigit);
}

bool hasExchange(QStringView code) {
    return code.startsWith(u"SH", Qt::CaseInsensitive) ||
           code.startsWith(u"SZ", Qt::CaseInsensitive);
}

bool isOfShanghai(QStringView dm) {
    return dm.startsWith(u"SH") || dm.startsWith(u"sh");
}

bool isOfBeijing(QStringView dm) {
    return isWholeCode(dm) && dm.startsWith(u"BJ");
}

QString exchangeOf(QStringView number) {
    return number.startsWith(u'6') ? u"SH"_s : u"SZ"_s;
}

bool isStockCode(QStringView dm) {
    return dm.size() == codeLength &&
           (dm.startsWith(u"SH6") || dm.startsWith(u"SZ0") || dm.startsWith(u"SZ30"));
}

bool isCodeTableCode(QStringView dm) {
    return (dm.startsWith(u"SH") || dm.startsWith(u"SZ")) && dm.size() <= codeLength;
}

bool isIndexCode(QStringView dm) {
    return dm == u"SH000300" || dm == leadingIndex || dm == u"SZ399001";
}

std::optional<QString> shortName(Connection& mainStore, const QString& dm) {
    const Recordset code(mainStore, u"select  dm,jc from dmb  where dm="_s + quoted(dm));
    if (code.atEnd()) {
        return std::nullopt;
    }
    return code.value(u"jc").toText();
}

QHash<QString, QString> shortNames(Connection& mainStore) {
    QHash<QString, QString> names;
    RowCursor row(mainStore, u"select dm,jc from dmb"_s);
    while (row.next()) {
        names.insert(row.string(0), row.string(1));
    }
    return names;
}

}  // namespace guanchao
