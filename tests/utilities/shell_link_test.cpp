#include "utilities/shell_link.h"

#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/files.h"

namespace guanchao {

class ShellLinkTest : public ::testing::Test {
protected:
    // The value of the key in the entry, as it stands in the file.
    static QString valueOf(const QString& path, const QString& key) {
        const QString text = QString::fromUtf8(contentOf(path));
        return text.section(u'\n' + key + u'=', 1, 1).section(u'\n', 0, 0);
    }

    QTemporaryDir folder_;
    LauncherFolders folders_{folder_.filePath(u"桌面/子"_s), folder_.filePath(u"programs"_s),
                             folder_.filePath(u"startup"_s)};
};

TEST_F(ShellLinkTest, EveryPathIsWrittenSoThatALauncherReadsItBack) {
    const std::tuple<QString, QString, QString> cases[] = {
        {u"/家/我的 程序/"_s, uR"("/家/我的 程序/)"_s, u"/家/我的 程序/"_s},
        {u"/a\"b'c/"_s, uR"("/a\\"b'c/)"_s, u"/a\"b'c/"_s},
        {u"/100%f/"_s, uR"(setsid "/100%%f/)"_s, u"/100%f/"_s},
        {u"/a=b/"_s, uR"(setsid "/a=b/)"_s, u"/a=b/"_s},
        {u"/$HOME`x`/"_s, uR"("/\\$HOME\\`x\\`/)"_s, u"/$HOME`x`/"_s},
        {u"/a\\b/"_s, uR"("/a\\\\b/)"_s, uR"(/a\\b/)"_s},
        {u"/a;b#c&d~/"_s, uR"("/a;b#c&d~/)"_s, u"/a;b#c&d~/"_s},
        {u"/a\nExec=b\t/"_s, uR"(setsid "/a\nExec=b\t/)"_s, uR"(/a\nExec=b\t/)"_s},
    };
    for (const auto& [folder, command, path] : cases) {
        const clsShellLink link(folders_, folder + u"guanchaotai2"_s, folder);
        link.createlnk(ShellFolder::programs);
        const QString made = folders_.programs + u"/guanchaotai2.desktop"_s;
        EXPECT_EQ(QProcess::execute(u"desktop-file-validate"_s, {made}), 0);
        EXPECT_TRUE(QFile::permissions(made) & QFile::ExeOwner);
        EXPECT_EQ(valueOf(made, u"Name"_s), u"guanchaotai2"_s);
        EXPECT_EQ(valueOf(made, u"Exec"_s), command + u"guanchaotai2\""_s);
        EXPECT_EQ(valueOf(made, u"TryExec"_s), path + u"guanchaotai2"_s);
        EXPECT_EQ(valueOf(made, u"Path"_s), path);
        EXPECT_EQ(valueOf(made, u"Icon"_s), path + u"pet.ico"_s);
    }
    EXPECT_EQ(QDir(folders_.programs).entryList(QDir::Files).size(), 1)
        << "each wrote over the last";
}

TEST_F(ShellLinkTest, AFolderThatCantBeWrittenIsPassedOverInSilence) {
    writeFile(folder_.filePath(u"file"_s));
    folders_.desktop = folder_.filePath(u"file/below"_s);
    folders_.startup.clear();
    ASSERT_TRUE(QDir().mkpath(folders_.programs + u"/guanchaotai.desktop"_s));
    const clsShellLink link(folders_, u"/opt/guanchaotai"_s, u"/opt/"_s);
    for (const ShellFolder number :
         {ShellFolder::desktop, ShellFolder::startMenu, ShellFolder::startup}) {
        link.createlnk(number);
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"file"_s});
    EXPECT_TRUE(QDir(folders_.programs).entryList(QDir::Files).isEmpty());
}

}  // namespace guanchao
