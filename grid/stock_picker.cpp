#include "grid/stock_picker.h"

#include <algorithm>

#include "base/activity.h"
#include "base/values.h"
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
           (market == u"SH"_s || market == u"SZ"_s);
}

QString stockHits(Connection& connection, const QString& statement) {
    QString found;
    for (Recordset rows(connection, statement); !rows.atEnd(); rows.moveNext()) {
        found += rows.value(u"dm").toText() + u"  "_s + rows.value(u"jc").toText() + separator;
    }
    return found;
}

}  // namespace

QString chazhaodaima(const StoreFile& mainStore, const QString& text) {
    const Activity activity(u"查找股票"_s);
    Connection connection = mainStore.open();
    const QString length = QString::number(text.size());
    QString found;
    // Boards, whose codes begin with 9, are not offered.
    if (isDigits(text) && text[0] != u'9') {
        found +=
            stockHits(connection, u"select dm,numdm,jc,shenmu FROM dmb where substr(numdm,1,"_s +
                                      length + u")="_s + quoted(text));
    }
    if (isLetters(text)) {
        found +=
            stockHits(connection, u"select  dm,numdm,jc,shenmu FROM dmb where substr(shenmu,1,"_s +
                                      length + u")="_s + quoted(text.toLower()));
    }
    if (isPrefixedCode(text)) {
        found += stockHits(connection, u"select  dm,numdm,jc,shenmu FROM dmb where substr(dm,1,"_s +
                                           length + u")="_s + quoted(text.toUpper()));
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

QString codeOfCandidate(const QString& line) {
    return trimBlanks(line).section(u' ', 0, 0);
}

}  // namespace guanchao
