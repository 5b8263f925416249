#include "collector/collector_program.h"

int main(int argc, char** argv) {
    guanchao::Application application(argc, argv);
    guanchao::DesktopDialogs dialogs;
    application.setDialogs(&dialogs);
    int result = 1;
    application.guard([&] { result = guanchao::CollectorProgram(application, dialogs).run(); });
    return result;
}
