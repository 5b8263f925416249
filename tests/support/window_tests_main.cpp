// The window tests run in the program's own application, so that they see its looks.
#include <gtest/gtest.h>

#include "frame/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    guanchao::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
