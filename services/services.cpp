#include "services/services.h"

#include <QHostAddress>
#include <QUrl>
#include <algorithm>
#include <cmath>

#include "base/values.h"
#include "formats/ini_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double longestTimeoutSeconds = 3600;
constexpr double longestPauseSeconds = 60;
// A service that accepts and never answers holds its window for no longer.
constexpr int patience = 15;
// A public service takes more than a few requests at once for an attack.
constexpr int politeAhead = 3;
constexpr int mostAhead = 6;
constexpr int mostOfAPurpose = 9;

const QString sinaReferer = u"https://finance.sina.com.cn/"_s;
const QString eastmoneyReferer = u"https://quote.eastmoney.com/"_s;
// Asked for twice before the first quote: a site that hangs must not hold the window up.
const Service newsPage = {u"http://cj.gw.com.cn"_s, {}, 4, 1, 0, u"page"_s};

// A purpose with each kind of service that can be asked for it.
struct Purpose {
    QString name;
    QList<Service> kinds;
    QStringList standard;  // the kinds without an entry
    QString unnamed;       // the kind of an entry with a host alone
};

const Purpose quotes = {
    u"quote"_s,
    {{u"https://hq.sinajs.cn"_s, sinaReferer, patience, politeAhead, 0, u"sina"_s},
     {u"https://qt.gtimg.cn"_s, {}, patience, politeAhead, 0, u"tencent"_s}},
    {u"sina"_s, u"tencent"_s},
    u"sina"_s};

// No public service answers in the form of csv any more; an entry may name a mirror of one.
const Purpose history = {
    u"history"_s,
    {{u"https://money.finance.sina.com.cn"_s, sinaReferer, patience, 1, 0.7, u"sina"_s},
     {u"https://web.ifzq.gtimg.cn"_s, {}, patience, 1, 0.7, u"tencent"_s},
     {u"https://push2his.eastmoney.com"_s, eastmoneyReferer, patience, 1, 0.7, u"eastmoney"_s},
     {{}, {}, patience, 1, 0, u"csv"_s}},
    {u"sina"_s, u"tencent"_s, u"eastmoney"_s},
    u"csv"_s};

const Purpose factors = {
    u"factors"_s,
    {{u"https://finance.sina.com.cn"_s, sinaReferer, patience, 1, 0.7, u"sina"_s}},
    {u"sina"_s},
    u"sina"_s};

const Purpose fundamentals = {
    u"fundamentals"_s,
    {{u"https://hq.sinajs.cn"_s, sinaReferer, patience, 1, 0, u"sina"_s}, newsPage},
    {u"sina"_s},
    u"page"_s};

const Purpose boards = {
    u"boards"_s,
    {{u"https://vip.stock.finance.sina.com.cn"_s, sinaReferer, patience, 1, 0.7, u"sina"_s},
     {u"https://push2.eastmoney.com"_s, eastmoneyReferer, patience, 1, 0.7, u"eastmoney"_s}},
    {u"sina"_s, u"eastmoney"_s},
    u"sina"_s};

// A fraction of a second counts as one, words that are no number as no entry.
int timeoutSeconds(const QString& entry, int standard) {
    const double seconds = numericPrefix(entry);
    if (seconds <= 0 && !readsAsNumber(entry)) {
        return standard;
    }
    return static_cast<int>(std::ceil(std::clamp(seconds, 0.0, longestTimeoutSeconds)));
}

// Nobody has to be spared on the own machine.
double pauseSeconds(const QString& entry, const QString& host, double standard) {
    if (readsAsNumber(entry)) {
        return std::clamp(numericPrefix(entry), 0.0, longestPauseSeconds);
    }
    const QString name = QUrl(host).host();
    const bool isOwn = name == u"localhost"_s || QHostAddress(name).isLoopback();
    return isOwn ? 0 : standard;
}

Service readService(const IniFile& ini, const QString& section, const Service& standard) {
    const auto entry = [&](const QString& key) {
        return ini.value(section, key).value_or(QString());
    };
    Service service = standard;
    service.host = ini.value(section, u"host"_s).value_or(standard.host);
    service.referer = ini.value(section, u"referer"_s).value_or(standard.referer);
    service.timeoutSeconds = timeoutSeconds(entry(u"timeout"_s), standard.timeoutSeconds);
    service.pauseSeconds = pauseSeconds(entry(u"pause"_s), service.host, standard.pauseSeconds);
    const double ahead = numericPrefix(entry(u"ahead"_s));
    if (ahead >= 1) {
        service.ahead = static_cast<int>(std::min<double>(ahead, mostAhead));
    }
    return service;
}

const Service* findKind(const Purpose& purpose, const QString& kind) {
    const auto found = std::ranges::find_if(purpose.kinds, [&](const Service& it) {
        return it.kind.compare(kind, Qt::CaseInsensitive) == 0;
    });
    return found == purpose.kinds.end() ? nullptr : &*found;
}

QList<Service> standardServices(const Purpose& purpose) {
    QList<Service> services;
    for (const QString& kind : purpose.standard) {
        services << *findKind(purpose, kind);
    }
    return services;
}

// A section without a host and a kind only changes how the first of the standard ones is asked.
QString kindOf(const IniFile& ini, const QString& section, const Purpose& purpose) {
    const bool hasHost = ini.value(section, u"host"_s).has_value();
    const QString unnamed = hasHost ? purpose.unnamed : purpose.standard.value(0, purpose.unnamed);
    return ini.value(section, u"kind"_s).value_or(unnamed);
}

QStringList sectionsOf(const IniFile& ini, const Purpose& purpose) {
    QStringList sections;
    for (int number = 1; number <= mostOfAPurpose; ++number) {
        const QString place = number == 1 ? QString() : u'.' + QString::number(number);
        if (ini.hasSection(purpose.name + place)) {
            sections << purpose.name + place;
        }
    }
    return sections;
}

QList<Service> readPurpose(const IniFile& ini, const Purpose& purpose, QStringList& complaints) {
    const QStringList sections = sectionsOf(ini, purpose);
    if (sections.isEmpty()) {
        return standardServices(purpose);
    }
    QList<Service> services;
    for (const QString& section : sections) {
        const QString kind = kindOf(ini, section, purpose);
        if (const Service* standard = findKind(purpose, kind)) {
            services << readService(ini, section, *standard);
        } else {
            complaints << u"services.ini 的 [%1] 写着 kind=%2，没有这一种，这一节没有用。"_s.arg(
                section, shortened(kind, longestShownName));
        }
    }
    return services;
}

// Factors are those of a history's prices: a file that names a history names them too, or none.
QList<Service> readFactors(const IniFile& ini, QStringList& complaints) {
    const bool areNamed = !sectionsOf(ini, factors).isEmpty();
    return areNamed || sectionsOf(ini, history).isEmpty() ? readPurpose(ini, factors, complaints)
                                                          : QList<Service>();
}

// A file with a news page and no fundamentals is from the time when that page alone had them.
QList<Service> readFundamentals(const IniFile& ini, const Services& others,
                                QStringList& complaints) {
    const bool areNamed = !sectionsOf(ini, fundamentals).isEmpty();
    return !areNamed && ini.hasSection(u"newspage"_s) ? QList<Service>{others.newspage}
                                                      : readPurpose(ini, fundamentals, complaints);
}

}  // namespace

Services readServices(const QString& iniPath) {
    const IniFile ini(iniPath);
    Services services;
    services.quote = readPurpose(ini, quotes, services.complaints);
    services.history = readPurpose(ini, history, services.complaints);
    services.factors = readFactors(ini, services.complaints);
    services.boards = readPurpose(ini, boards, services.complaints);
    services.chart = readService(ini, u"chart"_s, {u"https://image.sinajs.cn"_s, {}, patience});
    services.stockpage = readService(ini, u"stockpage"_s, {u"https://finance.sina.com.cn"_s, {}});
    services.sitepage = readService(ini, u"sitepage"_s, {u"https://quote.eastmoney.com"_s, {}});
    services.newspage = readService(ini, u"newspage"_s, newsPage);
    services.fundamentals = readFundamentals(ini, services, services.complaints);
    // The maker has no site of its own: without an entry the version check finds nothing.
    services.vendor = readService(ini, u"vendor"_s, {{}, {}, patience});
    // Without an entry the collector asks where the search page pattern of the heat store leads.
    services.search = readService(ini, u"search"_s, {});
    services.isPractice = ini.hasSection(u"practice"_s);
    return services;
}

}  // namespace guanchao
