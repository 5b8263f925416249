#include "platform/desktop/desktop_shell.h"

#include <fcntl.h>
#include <poll.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/files.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

class DesktopShellTest : public ::testing::Test {
protected:
    DesktopShellTest() { qputenv("PATH", QByteArray(folder_.path().toUtf8() + ':' + path_)); }
    ~DesktopShellTest() override { qputenv("PATH", path_); }

    void makeOpener(const QByteArray& script) const {
        const QString opener = folder_.filePath(u"xdg-open"_s);
        writeFile(opener, "#!/bin/sh\n" + script);
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    const QByteArray path_ = qgetenv("PATH");
    QTemporaryDir folder_;
};

TEST_F(DesktopShellTest, WhatNoProgramOpensIsTold) {
    QStringList told;
    DesktopShell shell;
    shell.whenNotOpened([&](const QString& target) { told << target; });
    makeOpener("test \"$1\" = /page.html\n");
    shell.open(u"http://h/"_s);
    shell.open(u"/page.html"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }));
    EXPECT_EQ(told, QStringList{u"http://h/"_s});
}

// The word of a theme such as 100%股 stands in its address with one "%" that belongs to no digits.
TEST_F(DesktopShellTest, AnAddressWithALoosePercentSignGoesOutAsItStands) {
    const QString pipe = folder_.filePath(u"pipe"_s);
    ASSERT_EQ(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
    makeOpener("printf %s \"$1\" >'" + pipe.toUtf8() + "'\n");
    const int reader = ::open(pipe.toUtf8().constData(), O_RDONLY | O_NONBLOCK);
    DesktopShell shell;
    shell.open(u"http://h/s?wd=100%%B9%C9"_s);
    pollfd data{.fd = reader, .events = POLLIN, .revents = 0};
    ASSERT_EQ(::poll(&data, 1, 30'000), 1);
    QFile received;
    ASSERT_TRUE(received.open(reader, QIODevice::ReadOnly, QFile::AutoCloseHandle));
    EXPECT_EQ(received.readAll(), "http://h/s?wd=100%%B9%C9");
}

}  // namespace guanchao
