#include "platform/services.h"

#include <algorithm>
#include <cmath>

#include "base/values.h"
#include "formats/ini_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double longestTimeoutSeconds = 3600;
// A service that accepts and never answers holds its window for no longer.
constexpr int patience = 15;
// A public service takes more than a few requests at once for an attack.
constexpr int politeAhead = 3;
constexpr int mostAhead = 6;

// A fraction of a second counts as one, words that are no number as no entry.
int timeoutSeconds(const QString& entry, int standard) {
    const double seconds = numericPrefix(entry);
    if (seconds <= 0 && !readsAsNumber(entry)) {
        return standard;
    }
    return static_cast<int>(std::ceil(std::clamp(seconds, 0.0, longestTimeoutSeconds)));
}

Service readService(const IniFile& ini, const QString& section, const Service& standard) {
    Service service;
    service.host = ini.value(section, u"host"_s).value_or(standard.host);
    service.referer = ini.value(section, u"referer"_s).value_or(standard.referer);
    service.timeoutSeconds = timeoutSeconds(ini.value(section, u"timeout"_s).value_or(QString()),
                                            standard.timeoutSeconds);
    const double ahead = numericPrefix(ini.value(section, u"ahead"_s).value_or(QString()));
    service.ahead =
        ahead >= 1 ? static_cast<int>(std::min<double>(ahead, mostAhead)) : standard.ahead;
    return service;
}

}  // namespace

Services readServices(const QString& iniPath) {
    const IniFile ini(iniPath);
    Services services;
    services.quote = readService(
        ini, u"quote"_s,
        {u"https://hq.sinajs.cn"_s, u"https://finance.sina.com.cn/"_s, patience, politeAhead});
    services.chart = readService(ini, u"chart"_s, {u"https://image.sinajs.cn"_s, {}, patience});
    services.stockpage = readService(ini, u"stockpage"_s, {u"https://finance.sina.com.cn"_s, {}});
    services.sitepage = readService(ini, u"sitepage"_s, {u"https://quote.eastmoney.com"_s, {}});
    // Asked for twice before the first quote: a site that hangs must not hold the window up.
    services.newspage = readService(ini, u"newspage"_s, {u"http://cj.gw.com.cn"_s, {}, 4});
    // No public service answers in this form any more; an entry may name a mirror of one.
    services.history = readService(ini, u"history"_s, {{}, {}, patience});
    // The maker has no site of its own: without an entry the version check finds nothing.
    services.vendor = readService(ini, u"vendor"_s, {{}, {}, patience});
    // Without an entry the collector asks where the search page pattern of the heat store leads.
    services.search = readService(ini, u"search"_s, {});
    return services;
}

}  // namespace guanchao
