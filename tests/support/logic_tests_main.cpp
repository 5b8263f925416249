// The logic tests run in an application without widgets: what is awaited needs its event loop.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;  // what lies in the user's own is no part of a test
    qputenv("HOME", home.path().toUtf8());
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
