// Two starts in one folder. The lock and the local socket are the system's own.
#include "app/only_program.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <thread>

#include "store/stores.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(OnlyProgramTest, ASecondStartRaisesTheFirstOfItsFolder) {
    const QTemporaryDir directory;
    const QString folder = applicationFolder(directory.path());
    const QString otherFolder = applicationFolder(directory.filePath(u"别处"_s));
    ASSERT_TRUE(QDir().mkpath(otherFolder));
    int raised = 0;
    std::optional<OnlyProgram> first(std::in_place, folder);
    ASSERT_TRUE(first->isFirst());
    first->raised = [&raised] { ++raised; };
    EXPECT_TRUE(OnlyProgram(otherFolder).isFirst()) << "folders know nothing of each other";

    OnlyProgram second(folder);
    EXPECT_FALSE(second.isFirst());
    bool answered = false;
    std::jthread start([&] { answered = second.raiseFirst(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return raised == 1; }));
    start.join();
    EXPECT_TRUE(answered);

    first.reset();
    EXPECT_TRUE(second.isFirst()) << "the next start is the first";
}

}  // namespace guanchao
