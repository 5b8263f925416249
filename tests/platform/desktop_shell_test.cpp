#include "platform/desktop/desktop_shell.h"

#include <fcntl.h>
#include <poll.h>

#include <QScopeGuard>
#include <QTemporaryDir>

#include "tests/support/files.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// The word of a theme such as 100%股 stands in its address with one "%" that belongs to no digits.
TEST(DesktopShell, AnAddressWithALoosePercentSignGoesOutAsItStands) {
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
    const QString opener = folder.filePath(u"xdg-open"_s);
    writeFile(opener, "#!/bin/sh\nprintf %s \"$1\" >'" + pipe.toUtf8() + "'\n");
    QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray(folder.path().toUtf8() + ':' + path));
    const auto restorePath = qScopeGuard([&] { qputenv("PATH", path); });

    const int reader = ::open(pipe.toUtf8().constData(), O_RDONLY | O_NONBLOCK);
    DesktopShell().open(u"http://h/s?wd=100%%B9%C9"_s);
    pollfd data{.fd = reader, .events = POLLIN, .revents = 0};
    ASSERT_EQ(::poll(&data, 1, 30'000), 1);
    QFile received;
    ASSERT_TRUE(received.open(reader, QIODevice::ReadOnly, QFile::AutoCloseHandle));
    EXPECT_EQ(received.readAll(), "http://h/s?wd=100%%B9%C9");
}

}  // namespace guanchao
