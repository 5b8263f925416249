// campaign_job WORD FOLDER HOST [ARGUMENT ...]: carries out one operation of the program on the
// stores of an application folder, once, at a fixed moment and with a market at HOST for all
// services. Questions are answered with yes and the last argument. Prints what the user is told,
// each committed step of those that tell it, and "done"; a failure goes to the error output in the
// words of the user's box, and the program ends with 1.
#include <cstdio>
#include <exception>

#include "exchange/restore.h"
#include "tests/campaign/job_desk.h"

using namespace guanchao;

static int carryOut(const QStringList& arguments) {
    const std::map<QString, Run> waiting = runs();
    const std::map<QString, Step> atOnce = steps();
    const auto run = waiting.find(arguments.value(1));
    const auto step = atOnce.find(arguments.value(1));
    if ((run == waiting.end() && step == atOnce.end()) || arguments.size() < 4) {
        QTextStream(stderr) << "usage: campaign_job WORD FOLDER HOST [ARGUMENT ...]\n";
        return 2;
    }
    JobDesk desk(applicationFolder(arguments[2]), arguments[3], arguments.mid(4));
    Runs running(desk.failures);
    running.start([&](std::stop_token stop) -> QCoro::Task<> {
        // As the program does before anything else.
        finishRestore(desk.stores, copiesFolder(desk.folder));
        dropCommitLeftovers(desk.stores.main, desk.stores.heat);
        if (step != atOnce.end()) {
            step->second(desk);
            co_return;
        }
        co_await run->second(desk, stop);
    });
    until([&] { return !running.running(); });
    QTextStream(stderr) << desk.failures.told.join(u'\n');
    if (desk.failures.told.isEmpty()) {
        print(u"done"_s);
    }
    for (const QString& told : desk.dialogs.shown) {
        print(told);
    }
    return desk.failures.told.isEmpty() ? 0 : 1;
}

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        return carryOut(QCoreApplication::arguments());
    } catch (const std::exception& failure) {
        std::fputs(failure.what(), stderr);
        return 1;
    }
}
