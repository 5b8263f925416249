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
    void takeOver(const QString& folder) {
        dialogs_.picked = folder;
        dialogs_.shown.clear();
        trigger(u"开始使用"_s);
        child<QPushButton>(shownWindow<StartPage>(), u"takeOver"_s)->click();
    }
    // What the page tells.
    static QString words() {
        auto* page = shownWindow<StartPage>();
        return page ? child<QLabel>(page, u"words"_s)->text() : QString();
    }
    bool isAsked() {
        return std::ranges::any_of(dialogs_.shown,
                                   [](const QString& it) { return it.contains(u"换成现在"_s); });
    }

    QString path_ = store_.folder() + u"services.ini"_s;
};

TEST_F(StartQuestionsTest, TheSitesOfTodayAreTakenUnlessTheUserRefusesOrHasWrittenTheFile) {
    dialogs_.answer = true;
    start(formerServices);
    EXPECT_TRUE(isAsked());
    EXPECT_EQ(contentOf(path_), standardFile());
    EXPECT_EQ(contentOf(path_ + u".以前"_s), formerServices);
    EXPECT_EQ(services_.history.value(0).kind, u"sina"_s) << "at once";
    EXPECT_EQ(services_.quote.value(1).kind, u"tencent"_s);
    dialogs_.answer = false;
    start(formerServices + "; mine");
    EXPECT_FALSE(isAsked());
    start(formerServices);
    EXPECT_TRUE(isAsked());
    start(formerServices);
    EXPECT_FALSE(isAsked()) << "a refusal holds";
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
    writeFile(there.stores.article.path, "ruined");
    const QString settings = store_.folder() + u"caijiqi.ini"_s;
    writeFile(settings, "[search]\n");
    writeFile(there.folder() + u"caijiqi.ini"_s, "[pace]\n");
    const KeptLog log(LogKind::run);
    dialogs_.answer = true;
    for (const QString& picked : {store_.folder(), there.folder()}) {
        takeOver(picked);
        until([&] { return !dialogs_.done.isEmpty() || words().startsWith(u"没有接管"_s); });
        EXPECT_EQ(shownWindow<StartPage>() != nullptr, picked == store_.folder());
    }
    EXPECT_TRUE(dialogs_.done.value(0).startsWith(
        u"已接管文件夹 "_s + there.folder() +
        u" 的主题库、采集库，还有 1 个设置、草稿等文件：caijiqi.ini。设置在下次启动时生效。"_s
        u"那里的文章库不能读取（已损坏，或者密码不对），没有换。"_s))
        << dialogs_.done.value(0).toStdString();
    EXPECT_TRUE(log.lines.last().endsWith(
        u" 步，主题库、采集库；文章库不能读取（已损坏，或者密码不对），不换"_s))
        << log.lines.last().toStdString();
    EXPECT_EQ(store_.rows(u"select count(distinct zhutiname) from dzhzhuti"_s),
              QStringList{u"3"_s});
    EXPECT_TRUE(CodeTableSettings(store_.folder() + u"界面.ini"_s).isRefused())
        << "the next start doesn't ask";
    trigger(u"开始使用"_s);
    child<QPushButton>(shownWindow<StartPage>(), u"restore"_s)->click();
    const QString copy = QDir(store_.folder() + u"备份"_s).entryList({u"* 恢复前"_s}).value(0);
    for (const QString& told : {u"，还有 1 个设置"_s, u"。那里的设置等文件和这里的一样"_s}) {
        clock_.moment = clock_.moment.addSecs(1);
        dialogs_.done.clear();
        trigger(u"恢复"_s);
        emit shownWindow<FormRestore>()->agreed({copy, {CopiedStore::main}});
        until([this] { return !dialogs_.done.isEmpty(); });
        EXPECT_TRUE(holds(dialogs_.done.value(0), told));
    }
    EXPECT_EQ(contentOf(settings), "[search]\n");
    EXPECT_EQ(failures_.texts, QStringList());
}

TEST_F(StartQuestionsTest, ATakeoverThatFailsBringsThePageBackWithTheReason) {
    load();
    const TestStores there;
    dialogs_.answer = true;
    const QString copies = store_.folder() + u"备份"_s;
    const QByteArray whole = contentOf(there.stores.main.path);
    Connection other = stores_.main.open();
    const struct {
        std::function<void()> spoil;  // while the question stands
        std::function<void()> mend;
        QString reason;
    } cases[] = {
        {[&] { processes_.running = {u"caijiqi.exe"_s}; }, [&] { processes_.running = {}; },
         u"采集程序正在运行"_s},
        {[&] { writeFile(copies); }, [&] { QFile::remove(copies); }, u"无法写入 "_s + copies},
        {[&] { other.execute(u"begin immediate"_s); }, [&] { other.execute(u"rollback"_s); },
         u"正被其他程序占用"_s},
        {[&] { writeFile(there.stores.main.path, "ruined"); },
         [&] { writeFile(there.stores.main.path, whole); }, u"主题库不能读取（已损坏）"_s},
    };
    for (const auto& it : cases) {
        dialogs_.onAsk = it.spoil;
        takeOver(there.folder());
        until([&] { return words().contains(it.reason); });
        EXPECT_TRUE(words().endsWith(u"再点“接管文件夹”，或者另选一个文件夹。"_s));
        it.mend();
    }
    dialogs_.onAsk = nullptr;
    EXPECT_EQ(store_.rows(u"select count(distinct zhutiname) from dzhzhuti"_s),
              QStringList{u"2"_s});
    takeOver(there.folder());
    until([&] { return !dialogs_.done.isEmpty(); });
    EXPECT_EQ(words(), QString());
    EXPECT_EQ(failures_.texts, QStringList()) << "no box beside the page";
}

}  // namespace guanchao
