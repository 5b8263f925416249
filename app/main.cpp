#include <optional>

#include "app/program.h"

int main(int argc, char** argv) {
    guanchao::Application application(argc, argv);
    guanchao::DesktopDialogs dialogs;
    application.setDialogs(&dialogs);
    std::optional<guanchao::Program> program;
    application.guard([&] { program.emplace(application, dialogs); });
    if (!program) {
        // The box with the failure is all there is.
        guanchao::Application::setQuitOnLastWindowClosed(true);
        guanchao::Application::exec();
        return 1;
    }
    return program->run();
}
