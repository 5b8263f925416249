#include "services/service_entries.h"

#include <QUrl>
#include <algorithm>
#include <cmath>

#include "base/values.h"

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

const QString useKey = u"use"_s;

const QString sinaReferer = u"https://finance.sina.com.cn/"_s;
const QString eastmoneyReferer = u"https://quote.eastmoney.com/"_s;
const QString newsPageSection = u"newspage"_s;
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

const Purpose stockList = {u"stocklist"_s, boards.kinds, boards.standard, boards.unnamed};

// Without a file the collector asks where the search page pattern of the heat store leads. It has
// time-outs and pauses of its own.
const Purpose search = {u"search"_s,
                        {{{}, {}, 0, 1, 0, u"page"_s},
                         {u"https://search-api-web.eastmoney.com"_s, u"https://so.eastmoney.com/"_s,
                          0, 1, 0, u"eastmoney"_s}},
                        {u"page"_s},
                        u"page"_s};

const QList<const Purpose*> ordered = {&quotes, &history,   &factors, &fundamentals,
                                       &boards, &stockList, &search};

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
    return isOnThisComputer(QUrl(host).host()) ? 0 : standard;
}

Service readService(const IniText& ini, const QString& section, const Service& standard) {
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
QString kindOf(const IniText& ini, const QString& section, const Purpose& purpose) {
    const bool hasHost = ini.value(section, u"host"_s).has_value();
    const QString unnamed = hasHost ? purpose.unnamed : purpose.standard.value(0, purpose.unnamed);
    return ini.value(section, u"kind"_s).value_or(unnamed);
}

QString sectionName(const Purpose& purpose, int number) {
    return number == 1 ? purpose.name : purpose.name + u'.' + QString::number(number);
}

QStringList sectionsOf(const IniText& ini, const Purpose& purpose) {
    QStringList sections;
    for (int number = 1; number <= mostOfAPurpose; ++number) {
        const QString section = sectionName(purpose, number);
        if (ini.hasSection(section)) {
            sections << section;
        }
    }
    return sections;
}

bool isUsed(const IniText& ini, const QString& section) {
    return ini.value(section, useKey) != u"0"_s;
}

ServiceEntry entryOf(const QString& purpose, const QString& section, Service service) {
    service.purpose = purpose;
    return {purpose, section, service};
}

// Each of a purpose that the file names; those of an unknown kind are passed over.
QList<ServiceEntry> namedEntries(const IniText& ini, const Purpose& purpose,
                                 QStringList& complaints) {
    QList<ServiceEntry> entries;
    for (const QString& section : sectionsOf(ini, purpose)) {
        const QString kind = kindOf(ini, section, purpose);
        if (const Service* standard = findKind(purpose, kind)) {
            entries << entryOf(purpose.name, section, readService(ini, section, *standard));
            entries.last().isUsed = isUsed(ini, section);
        } else {
            complaints << u"services.ini 的 [%1] 写着 kind=%2，没有这一种，这一节没有用。"_s.arg(
                section, shortened(kind, longestShownName));
        }
    }
    return entries;
}

QList<ServiceEntry> unwrittenEntries(const Purpose& purpose, const QList<Service>& services) {
    QList<ServiceEntry> entries;
    for (const Service& service : services) {
        const QString section = sectionName(purpose, static_cast<int>(entries.size()) + 1);
        entries << entryOf(purpose.name, section, service);
        entries.last().isWritten = false;
    }
    return entries;
}

// What a purpose has where the file doesn't name it.
QList<Service> unnamedServices(const IniText& ini, const Purpose& purpose) {
    // Factors are those of a history's prices: a file that names a history names them too, or none.
    if (purpose.name == factors.name && !sectionsOf(ini, history).isEmpty()) {
        return {};
    }
    // A file with a news page and no fundamentals is from the time when that page alone had them.
    if (purpose.name == fundamentals.name && ini.hasSection(newsPageSection)) {
        return {readService(ini, newsPageSection, newsPage)};
    }
    return standardServices(purpose);
}

// A service for whose purpose there is no other.
ServiceEntry singleEntry(const IniText& ini, const QString& purpose, const Service& standard) {
    ServiceEntry entry = entryOf(purpose, purpose, readService(ini, purpose, standard));
    entry.isUsed = isUsed(ini, purpose);
    entry.isWritten = ini.hasSection(purpose);
    return entry;
}

}  // namespace

ReadEntries readEntries(const IniText& ini) {
    ReadEntries read;
    for (const Purpose* purpose : ordered) {
        read.entries << (sectionsOf(ini, *purpose).isEmpty()
                             ? unwrittenEntries(*purpose, unnamedServices(ini, *purpose))
                             : namedEntries(ini, *purpose, read.complaints));
    }
    read.entries << singleEntry(ini, u"chart"_s, {u"https://image.sinajs.cn"_s, {}, patience})
                 << singleEntry(ini, u"stockpage"_s, {u"https://finance.sina.com.cn"_s, {}})
                 << singleEntry(ini, u"sitepage"_s, {u"https://quote.eastmoney.com"_s, {}})
                 << singleEntry(ini, newsPageSection, newsPage)
                 // The maker has no site of its own: without an entry the version check finds
                 // nothing.
                 << singleEntry(ini, u"vendor"_s, {{}, {}, patience});
    return read;
}

bool hasOrder(const QString& purpose) {
    return std::ranges::any_of(ordered, [&](const Purpose* it) { return it->name == purpose; });
}

void writeOut(const QList<ServiceEntry>& entries, IniText& ini) {
    for (const ServiceEntry& it : entries) {
        if (it.isWritten || !hasOrder(it.purpose)) {
            continue;
        }
        // The last one comes to stand first.
        ini.setValue(it.section, u"timeout"_s, QString::number(it.service.timeoutSeconds));
        if (!it.service.referer.isEmpty()) {
            ini.setValue(it.section, u"referer"_s, it.service.referer);
        }
        ini.setValue(it.section, u"host"_s, it.service.host);
        ini.setValue(it.section, u"kind"_s, it.service.kind);
    }
}

void setUsed(const ServiceEntry& entry, bool used, IniText& ini) {
    if (used) {
        ini.removeKey(entry.section, useKey);
    } else {
        ini.setValue(entry.section, useKey, u"0"_s);
    }
}

void setHost(const ServiceEntry& entry, const QString& host, IniText& ini) {
    ini.setValue(entry.section, u"host"_s, host);
    // A host alone is of another kind than no host and no kind.
    if (hasOrder(entry.purpose)) {
        ini.setValue(entry.section, u"kind"_s, entry.service.kind);
    }
}

}  // namespace guanchao
