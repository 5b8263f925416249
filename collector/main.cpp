#include "collector/collector_program.h"

int main(int argc, char** argv) {
    guanchao::Application application(argc, argv);
    int result = 1;
    application.guard([&] { result = guanchao::CollectorProgram(application).run(); });
    return result;
}
