// Files that take the place of others, where the disk takes no more.
#include "base/files.h"

#include <sys/resource.h>

#include <QTemporaryDir>
#include <csignal>

#include "base/activity.h"
#include "tests/support/files.h"

namespace guanchao {

namespace {

// A file of this process can't grow beyond so many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit now = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before_ = {};
};

}  // namespace

// A short text stays in the buffer until the file takes its place, a long one doesn't.
TEST(FilesTest, AFullDiskIsToldAndLeavesTheFormerFileWhateverTheLength) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"诊断.txt"_s);
    replaceFile(path, "former");
    for (const qsizetype length : {10, 100'000}) {
        const FullDisk disk(4);
        EXPECT_THROW(replaceFile(path, QByteArray(length, 'x')), OperationError) << length;
        EXPECT_FALSE(tryToReplaceFile(path, QByteArray(length, 'x'))) << length;
    }
    EXPECT_EQ(contentOf(path), "former");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "nothing beside it";
}

}  // namespace guanchao
