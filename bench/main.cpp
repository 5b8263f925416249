#include <benchmark/benchmark.h>

#include "frame/application.h"

int main(int argc, char** argv) {
    guanchao::Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
