#include "utilities/help.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(Help, WhatIsNotThereIsToldAndNotOpened) {
    QTemporaryDir folder;
    Globals globals;
    globals.yingyongmulu = folder.path() + u'/';
    const QString guide = globals.yingyongmulu + u"软件使用说明.html"_s;
    FakeDialogs dialogs;
    FakeShell shell;
    openHelp(globals, dialogs, shell);
    EXPECT_EQ(dialogs.shown.value(0),
              u"观潮台|没有找到软件使用说明，请检查文件是否存在：\n"_s + guide);
    openVendorSite(Service(), dialogs, shell);
    EXPECT_TRUE(dialogs.shown.value(1).contains(u"services.ini"_s));
    EXPECT_TRUE(shell.opened.isEmpty());
}

}  // namespace guanchao
