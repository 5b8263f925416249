#include "app/start_questions.h"

#include <QCryptographicHash>
#include <QSettings>

#include "articles/draft_offer.h"
#include "platform/dialogs.h"
#include "services/services_file.h"
#include "services/standard_file.h"

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

}  // namespace

QCoro::Task<> askAtTheStart(Environment& environment, Windows& windows, std::stop_token stop) {
    co_await offerDrafts(environment, windows, stop);
    co_await offerStandardServices(environment, stop);
}

}  // namespace guanchao
