#include "app/start_questions.h"

#include <QCryptographicHash>
#include <QSettings>
#include <QUrl>
#include <algorithm>

#include "articles/draft_offer.h"
#include "exchange/code_table_settings.h"
#include "exchange/form35.h"
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
    const QString iniPath = environment.applicationFolder + u"界面.ini"_s;
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

const QString codeTableQuestion =
    u"代码表里只有软件自带的那些股票，沪深两市现在有五千多只。\n"
    "现在从网站把代码表补全吗？约一分钟，随时可以停止；以后在“行情 / 更新代码表”里也能做。"_s;

// On the own computer there is no list of the market, but something to try the program with.
bool asksTheWeb(const Services& services) {
    return !services.isPractice && !services.stockList.isEmpty() &&
           std::ranges::none_of(services.quote, [](const Service& it) {
               const QString host = QUrl(it.host).host();
               return host.isEmpty() || isOnThisComputer(host);
           });
}

// Until it is refused, or a list has been read.
QCoro::Task<> offerCodeTable(Environment& environment, Windows& windows, std::stop_token stop) {
    const QString iniPath = environment.applicationFolder + u"界面.ini"_s;
    const CodeTableSettings said(iniPath);
    if (!asksTheWeb(environment.services) || said.isRefused() || !said.lastUpdate().isEmpty()) {
        co_return;
    }
    const auto look = [&environment] { return isSeedTable(environment.stores); };
    const bool isSeed = co_await patiently(look, stop);
    if (!isSeed) {
        co_return;
    }
    const bool wanted = co_await environment.dialogs.ask(stop, codeTableQuestion);
    if (wanted) {
        windows.raiseOrOpen<Form35>();
        environment.openWindows.find<Form35>()->begin();
    } else {
        CodeTableSettings(iniPath).setRefused();
    }
}

}  // namespace

QCoro::Task<> askAtTheStart(Environment& environment, Windows& windows, std::stop_token stop) {
    co_await offerDrafts(environment, windows, stop);
    co_await offerStandardServices(environment, stop);
    co_await offerCodeTable(environment, windows, stop);
}

}  // namespace guanchao
