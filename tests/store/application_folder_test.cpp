#include "store/application_folder.h"

#include <QTemporaryDir>

#include "base/activity.h"
#include "store/stores.h"
#include "tests/support/files.h"
#include "tests/support/outcome_of.h"

namespace guanchao {

// A program as the package installs it, below a folder of the test, and a user's home beside it.
class ApplicationFolderTest : public ::testing::Test {
protected:
    ApplicationFolderTest() {
        for (const QString& file :
             {u"lib/guanchaotai/guanchaotai"_s, u"lib/guanchaotai/caijiqi"_s,
              u"share/guanchaotai/dzhzhuti.mzdat"_s, u"share/guanchaotai/services.ini"_s,
              u"share/guanchaotai/软件使用说明.html"_s,
              u"share/guanchaotai/pictures/form2.png"_s}) {
            writeFile(usr_ + file, "1");
        }
        QDir(usr_).mkpath(u"share/guanchaotai/自选股"_s);
    }

    QString own(const QString& name) const { return home_ + u"/guanchaotai/"_s + name; }

    ApplicationFolder installed() const { return {usr_ + u"lib/guanchaotai"_s, home_}; }

    QTemporaryDir directory_;
    QString usr_ = directory_.filePath(u"usr/"_s);
    QString home_ = directory_.filePath(u"家 目录/share"_s);
};

TEST_F(ApplicationFolderTest, IsTheUsersOwnOnlyForAnInstalledProgram) {
    EXPECT_EQ(installed().path(), own({}));

    const QString portable = directory_.filePath(u"portable"_s);
    const ApplicationFolder alone(portable, home_);
    EXPECT_EQ(alone.path(), portable + u'/') << "a missing store is told by its own failure";
    alone.prepare();
    EXPECT_FALSE(QFileInfo::exists(home_));

    // A copy of the program inside of a user's own folder finds installed files: its own.
    writeFile(own(u"dzhzhuti.mzdat"_s), "used");
    writeFile(own(u"guanchaotai"_s), "program");
    const ApplicationFolder copied(home_ + u"/guanchaotai"_s, home_);
    EXPECT_EQ(copied.path(), own({}));
    copied.prepare();
    EXPECT_EQ(contentOf(own(u"guanchaotai"_s)), "program");
}

TEST_F(ApplicationFolderTest, AStartBringsWhatIsMissingAndKeepsWhatIsTheUsers) {
    installed().prepare();
    EXPECT_TRUE(QFileInfo(own(u"自选股"_s)).isDir());
    EXPECT_EQ(QDir(own({})).entryList(QDir::Files).size(), 5) << "nothing is left of the making";

    for (const QString& name : {u"dzhzhuti.mzdat"_s, u"services.ini"_s, u"软件使用说明.html"_s}) {
        writeFile(own(name), "changed");
    }
    QFile::remove(own(u"pictures/form2.png"_s));
    QFile::remove(own(u"caijiqi"_s));
    QFile::link(usr_ + u"gone"_s, own(u"caijiqi"_s));
    QFile::remove(own(u"guanchaotai"_s));
    writeFile(own(u"guanchaotai"_s), "an old copy");
    writeFile(usr_ + u"share/guanchaotai/wenzhang.mzdat"_s, "of a new version");
    installed().prepare();

    const std::pair<QString, QByteArray> cases[] = {
        {u"dzhzhuti.mzdat"_s, "changed"},
        {u"services.ini"_s, "changed"},
        {u"wenzhang.mzdat"_s, "of a new version"},
        {u"软件使用说明.html"_s, "1"},
        {u"pictures/form2.png"_s, "1"},
        {u"caijiqi"_s, "1"},
        {u"guanchaotai"_s, "1"},
    };
    for (const auto& [name, wanted] : cases) {
        EXPECT_EQ(contentOf(own(name)), wanted) << name.toStdString();
    }
    EXPECT_TRUE(QFileInfo(own(u"caijiqi"_s)).isSymLink()) << "a copy would be taken for portable";
}

TEST_F(ApplicationFolderTest, WhatCannotBeWrittenIsNamed) {
    const auto failure = [&] { return raisedBy<OperationError>([&] { installed().prepare(); }); };
    writeFile(home_, "a file in the way");
    EXPECT_EQ(failure().activity(), u"准备应用目录"_s);
    EXPECT_TRUE(begins(failure().reason(), u"无法写入 "_s + home_));

    QFile::remove(home_);
    const QString help = own(u"软件使用说明.html"_s);
    QDir().mkpath(help + u"/full"_s);
    EXPECT_TRUE(holds(failure().reason(), help));
}

}  // namespace guanchao
