#include "services/standard_file.h"
#include "tests/app/form2_fixture.h"
#include "tests/support/files.h"
#include "tests/support/former_services.h"

namespace guanchao {

class StartQuestionsTest : public Form2Test {
protected:
    StartQuestionsTest() { dialogs_.answer = false; }

    void start(const QByteArray& content) {
        writeFile(path_, content);
        dialogs_.shown.clear();
        load();
    }
    bool isAsked() {
        return std::ranges::any_of(dialogs_.shown,
                                   [](const QString& it) { return it.contains(u"换成现在"_s); });
    }

    QString path_ = store_.folder() + u"services.ini"_s;
};

TEST_F(StartQuestionsTest, TheSitesOfTodayAreAskedFromTheAnswerOn) {
    dialogs_.answer = true;
    start(formerServices);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(contentOf(path_), standardFile());
    EXPECT_EQ(contentOf(path_ + u".以前"_s), formerServices);
    EXPECT_EQ(services_.history.value(0).kind, u"sina"_s) << "at once";
    EXPECT_EQ(services_.quote.value(1).kind, u"tencent"_s);
}

TEST_F(StartQuestionsTest, ARefusalHoldsAndAFileOfTheUsersIsLeftAlone) {
    start(formerServices + "; mine");
    EXPECT_FALSE(isAsked());
    start(formerServices);
    EXPECT_TRUE(isAsked());
    start(formerServices);
    EXPECT_FALSE(isAsked());
    EXPECT_EQ(contentOf(path_), formerServices);
}

}  // namespace guanchao
