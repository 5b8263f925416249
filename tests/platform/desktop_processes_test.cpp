#include "platform/desktop/desktop_processes.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Real programs under names of their own: copies of one that waits for its input to end.
class DesktopProcessesTest : public ::testing::Test {
protected:
    QString copyAs(const QString& name) {
        const QString path = folder_.filePath(name);
        EXPECT_TRUE(QFile::copy(u"/usr/bin/cat"_s, path));
        return path;
    }

    QTemporaryDir folder_;
    DesktopProcesses processes_;
};

TEST_F(DesktopProcessesTest, AProgramRunsByTheNameOfItsImage) {
    const QString name = u"Caijiqi-test"_s;
    EXPECT_FALSE(processes_.isRunning(name));
    QProcess child;
    child.start(copyAs(name), QStringList());
    ASSERT_TRUE(child.waitForStarted());
    for (const QString& asked : {name, u"caijiqi-test.exe"_s, u"CAIJIQI-TEST.EXE"_s}) {
        EXPECT_TRUE(processes_.isRunning(asked)) << asked.toStdString();
    }
    EXPECT_FALSE(processes_.isRunning(u"caijiqi-test2"_s));
    QFile::remove(folder_.filePath(name));
    EXPECT_TRUE(processes_.isRunning(name)) << "its file is gone, it still runs";
    child.closeWriteChannel();
    ASSERT_TRUE(child.waitForFinished());
    EXPECT_FALSE(processes_.isRunning(name));
}

TEST_F(DesktopProcessesTest, AProgramStartsWithItsWordUnlessItIsMissing) {
    const QString pipe = folder_.filePath(u"pipe"_s);
    ASSERT_EQ(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
    // It ends when it has read the pipe to its end.
    ASSERT_TRUE(processes_.start(copyAs(u"collector"_s), pipe));
    QFile writer(pipe);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly)) << "returns once the program reads the pipe";
    EXPECT_TRUE(processes_.isRunning(u"collector"_s));
    EXPECT_FALSE(processes_.start(folder_.filePath(u"missing"_s), pipe));
}

}  // namespace guanchao
