#include "app/program_end.h"

#include "tests/support/window_test.h"

namespace guanchao {

class ProgramEndTest : public WindowTest {
protected:
    ProgramEndTest() {
        globals_.yingyongmulu = store_.folder();
        environment_.executableName = u"guanchaotai2"_s;
    }

    QWidget main_;
    ProgramEnd end_{main_, environment_, tray_,
                    [](std::stop_token) -> QCoro::Task<> { co_return; }};
    const QStringList ended_{u"guanchaotai.exe"_s, u"this"_s};
};

TEST_F(ProgramEndTest, GoesOnWithoutTheHeatStore) {
    QFile::remove(stores_.heat.path);
    end_.exit();
    EXPECT_EQ(failures_.texts.size(), 1);
    EXPECT_EQ(processes_.ended, ended_);
}

TEST_F(ProgramEndTest, ExitIsTheLaterWordWhereTheQuestionStands) {
    const auto answered = std::make_shared<Later<bool>>();
    dialogs_.gate = answered;
    dialogs_.answer = false;
    end_.closeMainWindow();
    end_.closeMainWindow();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|点“确定”退出，点“取消”进入托盘。"_s});
    end_.exit();
    EXPECT_EQ(processes_.ended, ended_);
    EXPECT_EQ(desktopTray_.calls, QStringList{u"remove"_s});
    EXPECT_EQ(contentOf(store_.folder() + u"read.ini"_s), "[read]\njintuopan=0\n");
    answered->deliver(true);
    EXPECT_EQ(tray_.hidden(), 0) << "the question is gone";
}

}  // namespace guanchao
