#include "app/start_questions.h"

#include <QCryptographicHash>
#include <QSettings>
#include <QUrl>
#include <algorithm>

#include "articles/draft_offer.h"
#include "exchange/code_table_settings.h"
#include "exchange/start_page.h"
#include "platform/dialogs.h"
#include "services/services_file.h"
#include "services/standard_file.h"
#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString question =
    u"services.ini 还是以前的软件带来的样子，里面的网站有的早已不应答，有的还没有写上。\n"
    "换成现在能用的网站吗？马上生效，原来的文件留作 services.ini.以前。"_s;

const QString refusedKey = u"行情来源/不换成"_s;

QString today() {
    return QString::fromLatin1(
        QCryptographicHash::hash(standardFile(), QCryptographicHash::Sha256).toHex());
}

// A refusal holds until the program brings other websites along.
QCoro::Task<> offerStandardServices(Environment& environment, std::stop_token stop) {
    const QString iniPath = environment.interfaceIniPath();
    const QString refused = QSettings(iniPath, QSettings::IniFormat).value(refusedKey).toString();
    if (!environment.servicesFile.isFormerStandard() || refused == today()) {
        co_return;
    }
    const bool wanted = co_await environment.dialogs.ask(stop, question);
    if (wanted) {
        environment.servicesFile.takeStandard();
    } else {
        QSettings(iniPath, QSettings::IniFormat).setValue(refusedKey, today());
    }
}

// On the own computer there is no list of the market, but something to try the program with.
bool asksTheWeb(const Services& services) {
    return !services.isPractice && !services.stockList.isEmpty() &&
           std::ranges::none_of(services.quote, [](const Service& it) {
               const QString host = QUrl(it.host).host();
               return host.isEmpty() || isOnThisComputer(host);
           });
}

QCoro::Task<bool> isFirstStart(Environment& environment, std::stop_token stop) {
    const CodeTableSettings said(environment.interfaceIniPath());
    if (!asksTheWeb(environment.services) || said.isRefused() || !said.lastUpdate().isEmpty()) {
        co_return false;
    }
    const auto look = [&environment] { return isSeedTable(environment.stores); };
    const bool isSeed = co_await patiently(look, stop);
    co_return isSeed;
}

QCoro::Task<> offerStart(Environment& environment, Windows& windows, std::stop_token stop) {
    const bool isFirst = co_await isFirstStart(environment, stop);
    if (!isFirst) {
        co_return;
    }
    windows.raiseOrOpen<StartPage>();
    const auto* page = environment.openWindows.find<StartPage>();
    const QString iniPath = environment.interfaceIniPath();
    QObject::connect(page, &QDialog::finished, page, [page, iniPath] {
        if (!page->hasChosen()) {
            CodeTableSettings(iniPath).setRefused();
        }
    });
}

}  // namespace

QCoro::Task<> askAtTheStart(Environment& environment, Windows& windows, std::stop_token stop) {
    co_await offerDrafts(environment, windows, stop);
    co_await offerStandardServices(environment, stop);
    co_await offerStart(environment, windows, stop);
}

}  // namespace guanchao
