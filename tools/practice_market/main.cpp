// The practice market as a program: serves the stocks of CODES.csv, some of Beijing, and the boards
// of a themes.csv beside it, on a free port of 127.0.0.1, writes the port's number to PORT_FILE,
// and runs until it is told to end or its parent ends. With --lively prices swing so widely that
// alarms come within a minute, at any hour.
// Exit codes: 0 ended, 1 could not serve, 2 bad arguments.

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <stdexcept>

#include "base/files.h"
#include "formats/seed_list.h"
#include "tools/practice_market/practice_market.h"

namespace {

using guanchao::Pace;
using guanchao::PracticeBoards;
using guanchao::PracticeMarket;
using guanchao::PracticeQuotes;

struct BadArguments : std::runtime_error {
    explicit BadArguments(const QString& text) : std::runtime_error(text.toStdString()) {}
};

struct Arguments {
    QString codesFile;
    QString portFile;
    Pace pace;
};

Arguments argumentsFrom(const QStringList& words) {
    QCommandLineParser parser;
    const QCommandLineOption lively(QStringLiteral("lively"));
    parser.addOption(lively);
    if (!parser.parse(words)) {
        throw BadArguments(parser.errorText());
    }
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2) {
        throw BadArguments(QStringLiteral("usage: practice_market CODES.csv PORT_FILE [--lively]"));
    }
    const Pace pace = parser.isSet(lively) ? Pace::lively : Pace::ordinary;
    return {files[0], files[1], pace};
}

// To be called before any thread starts: then the signals come to sigwait() alone.
sigset_t blockEndSignals() {
    sigset_t endSignals;
    sigemptyset(&endSignals);
    sigaddset(&endSignals, SIGTERM);
    sigaddset(&endSignals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &endSignals, nullptr);
    return endSignals;
}

void endWithParent() {
    const pid_t parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) {
        raise(SIGTERM);
    }
}

// Of an exchange whose stocks only those have who want them: the list of codes has none.
const std::vector<guanchao::PracticeStock> beijingStocks = {
    {QStringLiteral("BJ920185"), QStringLiteral("贝特瑞")},
    {QStringLiteral("BJ920493"), QStringLiteral("并行科技")},
    {QStringLiteral("BJ920799"), QStringLiteral("艾融软件")}};

constexpr qsizetype columnsOfThemes = 4;

PracticeBoards boardsBeside(const QString& codesFile,
                            const std::vector<guanchao::PracticeStock>& stocks) {
    const QString themes = QFileInfo(codesFile).dir().filePath(QStringLiteral("themes.csv"));
    return QFileInfo::exists(themes)
               ? PracticeBoards(stocks, guanchao::readSeedList(themes, columnsOfThemes))
               : PracticeBoards(stocks);
}

void serve(const Arguments& arguments) {
    const sigset_t endSignals = blockEndSignals();
    endWithParent();
    auto stocks = guanchao::readPracticeStocks(arguments.codesFile);
    stocks.insert(stocks.end(), beijingStocks.begin(), beijingStocks.end());
    PracticeMarket market(
        PracticeQuotes(stocks, arguments.pace), [] { return QDateTime::currentDateTime(); },
        boardsBeside(arguments.codesFile, stocks));
    guanchao::replaceFile(arguments.portFile, QByteArray::number(market.start()) + '\n');
    int received = 0;
    sigwait(&endSignals, &received);
    market.stop();
}

}  // namespace

int main(int argc, char** argv) {
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words << QString::fromLocal8Bit(argv[i]);
    }
    try {
        serve(argumentsFrom(words));
        return 0;
    } catch (const BadArguments& error) {
        std::fprintf(stderr, "practice_market: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "practice_market: %s\n", error.what());
        return 1;
    }
}
