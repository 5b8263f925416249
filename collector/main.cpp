#include "collector/collector_program.h"

int main(int argc, char** argv) {
    guanchao::CollectorProgram program(argc, argv);
    return program.run();
}
