#include "app/program.h"

int main(int argc, char** argv) {
    guanchao::Program program(argc, argv);
    return program.run();
}
