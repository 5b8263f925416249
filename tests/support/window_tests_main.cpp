// The window tests run in the program's own application, so that they see its looks.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "frame/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;  // what lies in the user's own is no part of a test
    qputenv("HOME", home.path().toUtf8());
    guanchao::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
