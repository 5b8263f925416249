#include "app/program.h"

int main(int argc, char** argv) {
    guanchao::Application application(argc, argv);
    guanchao::DesktopDialogs dialogs;
    application.setDialogs(&dialogs);
    int result = 1;
    application.guard([&] { result = guanchao::Program(application, dialogs).run(); });
    return result;
}
