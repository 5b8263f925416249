#include <optional>

#include "app/only_program.h"
#include "app/program.h"

using namespace guanchao;

namespace {

int runUntilBoxesAreClosed() {
    Application::setQuitOnLastWindowClosed(true);
    Application::exec();
    return 1;
}

int raiseFirst(const OnlyProgram& program, Dialogs& dialogs) {
    if (program.raiseFirst()) {
        return 0;
    }
    dialogs.tell(QStringLiteral(
        "观潮台已经在运行，但没有回应。请稍等再试；它一直没有回应时，请先结束它的进程。"));
    return runUntilBoxesAreClosed();
}

}  // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    DesktopDialogs dialogs;
    application.setDialogs(&dialogs);
    std::optional<OnlyProgram> only;
    std::optional<Program> program;
    bool isFirst = true;
    application.guard([&] {
        const QString folder = preparedApplicationFolder();
        only.emplace(folder);
        isFirst = only->isFirst();
        if (isFirst) {
            program.emplace(application, dialogs, folder);
            only->raised = [&program] { program->showMainWindow(); };
        }
    });
    if (program) {
        return program->run();
    }
    return isFirst ? runUntilBoxesAreClosed() : raiseFirst(*only, dialogs);
}
