#include "services/services_file.h"

#include <QFile>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "base/activity.h"
#include "base/files.h"
#include "services/practice.h"
#include "services/standard_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString changing = u"改动行情来源"_s;

// Without what the paths of the requests begin with.
QString hostFrom(const QString& typed) {
    QString host = typed.trimmed();
    while (host.endsWith(u'/')) {
        host.chop(1);
    }
    const QUrl url(host, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"http"_s || url.scheme() == u"https"_s;
    const bool isAlone = url.path().isEmpty() && !url.hasQuery() && !url.hasFragment();
    if (!url.isValid() || !isWeb || url.host().isEmpty() || !isAlone) {
        throw OperationError(
            u"网址要像 https://hq.sinajs.cn 这样，带 http:// 或 https://，后面没有别的。"_s);
    }
    return host;
}

// The one beside it of the same purpose; null if there is none.
const ServiceEntry* neighbourOf(const QList<ServiceEntry>& entries, const QString& section,
                                bool up) {
    const auto found = std::ranges::find(entries, section, &ServiceEntry::section);
    const qsizetype at = std::distance(entries.begin(), found) + (up ? -1 : 1);
    if (found == entries.end() || at < 0 || at >= entries.size()) {
        return nullptr;
    }
    return entries[at].purpose == found->purpose ? &entries[at] : nullptr;
}

}  // namespace

ServicesFile::ServicesFile(QString path, Services& services)
    : path_(std::move(path)), services_(services) {}

// One that isn't there is empty; what can't be read must not be written over.
QByteArray ServicesFile::content() const {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        if (!file.exists()) {
            return {};
        }
        throw OperationError(u"读不了 %1：%2"_s.arg(path_, reasonOf(file)));
    }
    return file.readAll();
}

bool ServicesFile::isFormerStandard() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) && guanchao::isFormerStandard(file.readAll());
}

void ServicesFile::takeStandard() {
    const Activity activity(changing);
    hasKeptFormer_ = false;
    replace(content(), standardFile());
}

QList<ServiceEntry> ServicesFile::entries() const {
    return readEntries(IniText(content())).entries;
}

// A folder that was for practice as the program started is so to its end.
Services ServicesFile::inFile() const {
    Services services = readServices(IniText(content()));
    services.isPractice = services.isPractice || services_.isPractice;
    return services;
}

// One that somebody has written into the file by hand.
void ServicesFile::refuseRealNewcomer() const {
    if (const std::optional<Service> real = realNewcomer(services_, inFile())) {
        refuseReal(services_, real->host);
    }
}

bool ServicesFile::move(const QString& section, bool up) {
    const QList<ServiceEntry> now = entries();
    const ServiceEntry* other = neighbourOf(now, section, up);
    if (!other) {
        return false;
    }
    refuseRealNewcomer();
    change(
        [&](const QList<ServiceEntry>&, IniText& ini) { ini.swapNames(section, other->section); });
    return true;
}

void ServicesFile::setUsed(const QString& section, bool used) {
    changeEntry(section, [this, used](const ServiceEntry& entry, IniText& ini) {
        if (used) {
            refuseRealNewcomer();
            refuseReal(services_, entry.service.host);
        }
        guanchao::setUsed(entry, used, ini);
    });
}

void ServicesFile::setHost(const QString& section, const QString& host) {
    const Activity activity(changing);
    const QString name = hostFrom(host);
    refuseReal(services_, name);
    changeEntry(section, [name](const ServiceEntry& entry, IniText& ini) {
        guanchao::setHost(entry, name, ini);
    });
}

void ServicesFile::changeEntry(
    const QString& section,
    const std::function<void(const ServiceEntry& entry, IniText& ini)>& edit) {
    change([&](const QList<ServiceEntry>& entries, IniText& ini) {
        const auto found = std::ranges::find(entries, section, &ServiceEntry::section);
        if (found == entries.end()) {
            throw OperationError(u"services.ini 里没有 [%1] 了"_s.arg(section));
        }
        edit(*found, ini);
    });
}

void ServicesFile::change(const Edit& edit) {
    const Activity activity(changing);
    const QByteArray former = content();
    IniText ini(former);
    const QList<ServiceEntry> entries = readEntries(ini).entries;
    writeOut(entries, ini);
    edit(entries, ini);
    replace(former, ini.bytes());
}

void ServicesFile::replace(const QByteArray& former, const QByteArray& content) {
    if (!hasKeptFormer_ && !former.isEmpty()) {
        replaceFile(path_ + u".以前"_s, former);
    }
    replaceFile(path_, content);
    hasKeptFormer_ = true;
    const Services next = inFile();
    if (!realNewcomer(services_, next)) {
        services_ = next;
    }
}

}  // namespace guanchao
