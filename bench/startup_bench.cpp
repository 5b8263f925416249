// From the start of the process to the first painted theme table, on the prepared stores: without
// services, and with all of them dead or silent. No network may add to it: 300 ms is what a user
// takes for at once.
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include "bench/compare.h"
#include "store/prepared_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double atOnce = 300;

const QStringList services = {u"quote"_s,    u"chart"_s,     u"stockpage"_s, u"sitepage"_s,
                              u"newspage"_s, u"history"_s,   u"factors"_s,   u"fundamentals"_s,
                              u"boards"_s,   u"stocklist"_s, u"vendor"_s,    u"search"_s};

void writeServices(const QString& folder, const QString& host) {
    QFile file(folder + u"/services.ini"_s);
    file.open(QIODevice::WriteOnly);
    for (const QString& service : services) {
        file.write((u'[' + service + u"]\nhost="_s + host + u'\n').toUtf8());
    }
}

void startup(benchmark::State& state, QString (*host)(QTcpServer& server)) {
    QTemporaryDir folder;
    prepareStores(folder.path(), QStringLiteral(GUANCHAO_SOURCE_DIR "/data"),
                  QDateTime::currentDateTime());
    QTcpServer server;
    writeServices(folder.path(), host(server));
    const QString program = folder.filePath(u"startup_probe"_s);
    QFile::copy(QStringLiteral(GUANCHAO_STARTUP_PROBE), program);
    measure(state, [&] {
        if (QProcess::execute(program, {}) != 0) {
            state.SkipWithError("the program did not come to its first paint");
        }
    });
    state.counters["limit_ms"] = atOnce;
    state.counters["ratio"] = state.counters["program_ms"] / atOnce;
}

QString none(QTcpServer&) {
    return {};
}

QString dead(QTcpServer&) {
    return u"http://127.0.0.1:1"_s;
}

// The system takes its connections, and nobody reads them.
QString silent(QTcpServer& server) {
    server.listen(QHostAddress::LocalHost);
    return u"http://127.0.0.1:%1"_s.arg(server.serverPort());
}

const bool registered = [] {
    const struct {
        const char* name;
        QString (*host)(QTcpServer& server);
    } cases[] = {{"startup/noServices", none}, {"startup/dead", dead}, {"startup/silent", silent}};
    for (const auto& it : cases) {
        benchmark::RegisterBenchmark(it.name, startup, it.host)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(10);
    }
    return true;
}();

}  // namespace

}  // namespace guanchao
