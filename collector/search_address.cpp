#include "collector/search_address.h"

#include <QRegularExpression>

#include "base/activity.h"
#include "heat/url_encode.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

SearchAddress::SearchAddress(const QString& pattern, const Service& search, int timeoutSeconds)
    : service_(search) {
    static const QRegularExpression address(u"^(https?://[^/]+)(/.*)$"_s);
    const QRegularExpressionMatch match = address.match(pattern);
    if (!match.hasMatch() || !pattern.contains(u"tihuandm"_s)) {
        throw OperationError(u"搜索网址不是带 tihuandm 的完整网址："_s + pattern);
    }
    if (service_.host.isEmpty()) {
        service_.host = match.captured(1);
    }
    if (service_.timeoutSeconds == 0) {
        service_.timeoutSeconds = timeoutSeconds;
    }
    pathPattern_ = match.captured(2);
}

QString SearchAddress::path(const QString& words, const QString& period) const {
    // A # would begin a part that is never sent, with the period in it.
    return searchPage(pathPattern_, words).replace(u'#', u"%23"_s) + period;
}

}  // namespace guanchao
