// live_check: asks each service of a services.ini once and prints what came.
// Exit codes: 0 each purpose has a service that answers, 1 one has none, 2 bad arguments or files.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/values.h"
#include "collector/search_check.h"
#include "platform/qt_http_client.h"
#include "services/polite_http.h"
#include "store/application_folder.h"
#include "store/stores.h"
#include "tools/live_check/check_table.h"
#include "utilities/service_checks.h"

namespace {

using namespace guanchao;
using namespace Qt::Literals::StringLiterals;

const QString usage =
    uR"(用法：live_check [--pause 秒] [应用文件夹]
把 services.ini 里的每个网站、每一种各问一次，一个一个地问，打印一张表：哪个答了，答了什么，用了多少毫秒；
哪个没有答，为什么，应答开头是什么。
  应用文件夹   读其中的 services.ini；不写，就是软件自己的应用文件夹。没有这个文件，就问缺省的网站
  --pause 秒   两个网站之间隔几秒，可以写小数，不写是 1
  --help       显示这些
每一种用途至少有一个网站答了，返回 0；有一种没有，返回 1；参数或者文件不对，返回 2。
)"_s;

struct BadArguments {};

struct Arguments {
    QString folder;  // ends in a separator
    std::chrono::milliseconds pause{1000};
    bool helpWanted = false;
};

QString ownFolder() {
    return ApplicationFolder(QCoreApplication::applicationDirPath(),
                             QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
        .path();
}

Arguments readArguments() {
    QCommandLineParser parser;
    const QCommandLineOption help(u"help"_s);
    const QCommandLineOption pause(u"pause"_s, {}, u"seconds"_s, u"1"_s);
    parser.addOptions({help, pause});
    const bool isRead = parser.parse(QCoreApplication::arguments());
    bool isNumber = false;
    const double seconds = parser.value(pause).toDouble(&isNumber);
    const QStringList folders = parser.positionalArguments();
    if (!isRead || !isNumber || seconds < 0 || seconds > 60 || folders.size() > 1) {
        throw BadArguments();
    }
    const QString folder = folders.isEmpty() ? ownFolder() : QDir(folders[0]).absolutePath() + u'/';
    return {folder, std::chrono::milliseconds(qRound(seconds * 1000)), parser.isSet(help)};
}

int check(const Arguments& arguments, QTextStream& out) {
    const QString ini = arguments.folder + u"services.ini"_s;
    const Services services = readServices(ini);
    const SystemClock clock;
    QList<Check> checks = serviceChecks(services);
    checks << searchCheck(services, storesIn(arguments.folder).heat, arguments.folder, clock);
    out << timeText(clock.now()) << ' ' << ini
        << (QFileInfo::exists(ini) ? u""_s : u"（没有这个文件，问缺省的网站）"_s) << '\n';
    for (const QString& complaint : services.complaints) {
        out << complaint << '\n';
    }
    QtHttpClient web;
    PoliteHttp polite(web, clock);
    CheckTable table(out);
    CheckRun run(polite, clock, arguments.pause, [&](const CheckRow& row) { table.add(row); });
    QCoro::waitFor(run.run(checks, std::stop_token()));
    const QStringList silent = table.silent();
    out << (silent.isEmpty() ? u"每一种用途都有网站应答。"_s
                             : u"没有网站应答的用途："_s + silent.join(u"、"_s) + u"。"_s)
        << '\n';
    return silent.isEmpty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    try {
        const Arguments arguments = readArguments();
        if (arguments.helpWanted) {
            out << usage;
            return 0;
        }
        return check(arguments, out);
    } catch (const BadArguments&) {
        QTextStream(stderr) << usage;
    } catch (const std::exception& failure) {
        QTextStream(stderr) << QString::fromUtf8(failure.what()) << '\n';
    }
    return 2;
}
