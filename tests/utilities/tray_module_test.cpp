#include "utilities/tray_module.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(TrayModuleTest, HidesOnlyWhereThereIsOneAndSaysOnceIfThereIsNone) {
    const Globals globals;
    FakeDialogs dialogs;
    FakeTray desktopTray;
    TrayModule tray(desktopTray, globals);
    EXPECT_TRUE(tray.hide(dialogs));
    EXPECT_EQ(tray.hidden(), 1);
    tray.show();
    EXPECT_EQ(tray.hidden(), 0);
    EXPECT_TRUE(dialogs.shown.isEmpty());
    desktopTray.isThere = false;
    for (int time = 0; time < 2; ++time) {
        EXPECT_FALSE(tray.hide(dialogs));
        EXPECT_EQ(tray.hidden(), 0);
        EXPECT_EQ(dialogs.shown,
                  QStringList{u"观潮台|这个桌面没有托盘，窗口改为最小化，监控照常运行。"_s});
    }
}

}  // namespace guanchao
