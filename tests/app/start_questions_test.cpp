#include "exchange/code_table_settings.h"
#include "exchange/form_restore.h"
#include "exchange/start_page.h"
#include "services/standard_file.h"
#include "tests/app/form2_fixture.h"
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

TEST_F(StartQuestionsTest, ThePageComesByItselfAtAFirstStartUntilItIsClosedOrTheTableIsFilled) {
    CodeTableSettings said(environment_.applicationFolder + u"界面.ini"_s);
    const QString web = u"http://quotes"_s;
    const QString seed = u"'2026-01-01'"_s;
    const struct {
        const char* name;
        QString host;  // of the quotes
        bool isPractice;
        QString times;    // of the code table
        QString updated;  // from a list
        bool comes;
        bool isChosen = false;
    } cases[] = {
        {"practice", web, true, seed, {}, false},
        {"services of one's own", u"http://127.0.0.1:1"_s, false, seed, {}, false},
        {"codes have come since", web, false, u"dm"_s, {}, false},
        {"a list has been read", web, false, seed, u"2026-11-24 10:00:00"_s, false},
        {"a choice, and nothing came of it", web, false, seed, {}, true, true},
        {"closed without a choice", web, false, seed, {}, true},
        {"not again", web, false, seed, {}, false},
    };
    for (const auto& it : cases) {
        services_.quote = services_.stockList = {{it.host, {}}};
        services_.isPractice = it.isPractice;
        store_.run({u"update dmb set newdmtime="_s + it.times});
        said.setLastUpdate(it.updated);
        start({});
        auto* page = environment_.openWindows.find<StartPage>();
        ASSERT_EQ(page != nullptr, it.comes) << it.name;
        if (it.isChosen) {
            child<QPushButton>(page, u"live"_s)->click();
        }
        environment_.openWindows.close<StartPage>();
    }
    trigger(u"开始使用"_s);
    EXPECT_TRUE(environment_.openWindows.find<StartPage>()) << "at any time";
}

TEST_F(StartQuestionsTest, AFolderThatIsTakenOverShowsAtOnceAndCanBeTakenBack) {
    load();
    TestStores there;
    for (const QString& theme : {u"光伏"_s, u"风电"_s, u"储能"_s}) {
        there.addMember(theme, u"SH600519"_s);
    }
    dialogs_.answer = true;
    for (const QString& picked : {store_.folder(), there.folder()}) {
        dialogs_.picked = picked + u"dzhzhuti.mzdat"_s;
        dialogs_.shown.clear();
        trigger(u"开始使用"_s);
        child<QPushButton>(shownWindow<StartPage>(), u"takeOver"_s)->click();
        until([&] { return dialogs_.shown.size() == (picked == there.folder() ? 3 : 2); });
        EXPECT_EQ(shownWindow<StartPage>() != nullptr, picked == store_.folder());
    }
    EXPECT_TRUE(dialogs_.shown[1].contains(u"那里有：3 个主题，3 条"_s));
    EXPECT_TRUE(dialogs_.shown[2].startsWith(u"观潮台|已接管文件夹 "_s + there.folder() +
                                             u" 的主题库、文章库、采集库。"_s));
    EXPECT_EQ(store_.rows(u"select count(distinct zhutiname) from dzhzhuti"_s),
              QStringList{u"3"_s});
    EXPECT_TRUE(CodeTableSettings(store_.folder() + u"界面.ini"_s).isRefused())
        << "the next start doesn't ask";
    trigger(u"开始使用"_s);
    child<QPushButton>(shownWindow<StartPage>(), u"restore"_s)->click();
    EXPECT_TRUE(shownWindow<FormRestore>());
    EXPECT_EQ(failures_.texts, QStringList());
}

}  // namespace guanchao
