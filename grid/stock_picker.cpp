#include "grid/stock_picker.h"

#include <algorithm>

#include "base/activity.h"
#include "base/values.h"
#include "services/delisted.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString separator = u"&&"_s;

template <typename Test>
bool consistsOf(QStringView text, Test test) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), test);
}

bool isDigits(QStringView text) {
    return consistsOf(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isLetters(QStringView text) {
    return consistsOf(text,
                      [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); });
}

bool isPrefixedCode(const QString& text) {
    const QString market = text.first(std::min<qsizetype>(2, text.size())).toUpper();
    return text.size() >= 3 && isDigits(QStringView(text).sliced(2)) &&
           (market == u"SH"_s || market == u"SZ"_s || market == u"BJ"_s);
}

QString stockHits(Connection& connection, const QString& condition) {
    QString found;
    for (Recordset rows(connection, u"select dm,jc,dm in "_s + delistedCodes(connection) +
                                        u" as gone from dmb where "_s + condition);
         !rows.atEnd(); rows.moveNext()) {
        const bool isGone = rows.value(u"gone").toInteger() != 0;
        found += rows.value(u"dm").toText() + u"  "_s + rows.value(u"jc").toText() +
                 (isGone ? u"  "_s + delistedWord : QString()) + separator;
    }
    return found;
}

}  // namespace

QString chazhaodaima(const StoreFile& mainStore, const QString& text) {
    const Activity activity(u"查找股票"_s);
    Connection connection = mainStore.open();
    const QString length = QString::number(text.size());
    QString found;
    if (isDigits(text)) {
        // Boards have codes that begin with 9; of stocks only those of Beijing are offered.
        const QString ofBeijing = text[0] == u'9' ? u" and dm like 'BJ%'"_s : QString();
        found += stockHits(connection,
                           u"substr(numdm,1,"_s + length + u")="_s + quoted(text) + ofBeijing);
    }
    if (isLetters(text)) {
        found += stockHits(connection,
                           u"substr(shenmu,1,"_s + length + u")="_s + quoted(text.toLower()));
    }
    if (isPrefixedCode(text)) {
        found +=
            stockHits(connection, u"substr(dm,1,"_s + length + u")="_s + quoted(text.toUpper()));
    }
    return found;
}

QStringList candidateLines(const QString& candidates) {
    return candidates.split(separator, Qt::SkipEmptyParts);
}

int candidateListHeight(const QString& candidates) {
    const auto upperBound = static_cast<int>(candidates.count(separator));
    return upperBound < 17 ? upperBound * 150 + 330 : 2900;
}

QString stockOfCandidate(const QString& line) {
    const bool isGone = line.endsWith(delistedWord);
    return trimBlanks(isGone ? line.chopped(delistedWord.size()) : line);
}

QString codeOfCandidate(const QString& line) {
    return trimBlanks(line).section(u' ', 0, 0);
}

}  // namespace guanchao
