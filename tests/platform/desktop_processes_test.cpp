#include "platform/desktop/desktop_processes.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/qt_printers.h"

namespace guanchao {

// A real program under a name of its own: a copy of one that waits for its input to end.
TEST(DesktopProcessesTest, AProgramRunsByTheNameOfItsImageAndStartsWithItsWordUnlessItIsMissing) {
    const QTemporaryDir folder;
    DesktopProcesses processes(folder.path());
    const QTemporaryDir otherFolder;
    DesktopProcesses others(otherFolder.path());
    const QString name = u"Caijiqi-test"_s;
    ASSERT_TRUE(QFile::copy(u"/usr/bin/cat"_s, folder.filePath(name)));
    EXPECT_FALSE(processes.isRunning(name));
    QProcess child;
    child.start(folder.filePath(name), QStringList());
    ASSERT_TRUE(child.waitForStarted());
    for (const QString& asked : {name, u"caijiqi-test.exe"_s, u"CAIJIQI-TEST.EXE"_s}) {
        EXPECT_TRUE(processes.isRunning(asked)) << asked.toStdString();
    }
    EXPECT_FALSE(processes.isRunning(u"caijiqi-test2"_s));
    EXPECT_FALSE(others.isRunning(name)) << "of another folder";
    others.endByImageName(name);
    EXPECT_TRUE(processes.isRunning(name));
    ASSERT_TRUE(QFile::link(folder.filePath(name), otherFolder.filePath(name)));
    EXPECT_TRUE(others.isRunning(name)) << "by its link";
    QFile::remove(folder.filePath(name));
    EXPECT_TRUE(processes.isRunning(name)) << "its file is gone, it still runs";
    child.closeWriteChannel();
    ASSERT_TRUE(child.waitForFinished());
    EXPECT_FALSE(processes.isRunning(name));
    // It ends when it has read the pipe to its end.
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
    ASSERT_TRUE(processes.start(u"/usr/bin/cat"_s, pipe));
    QFile writer(pipe);
    EXPECT_TRUE(writer.open(QIODevice::WriteOnly)) << "returns once the program reads the pipe";
    EXPECT_FALSE(processes.start(folder.filePath(u"missing"_s), pipe));
}

}  // namespace guanchao
