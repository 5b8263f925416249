#include "exchange/form35.h"
#include "platform/qt_http_client.h"
#include "services/standard_file.h"
#include "tests/app/form2_fixture.h"
#include "tests/support/former_services.h"
#include "tools/practice_market/practice_market.h"

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

TEST_F(StartQuestionsTest, TheCodeTableOfANewFolderIsOfferedUntilItIsFilled) {
    const std::vector<PracticeStock> stocks = {{u"SH600000"_s, u"浦发银行"_s},
                                               {u"SH600519"_s, u"贵州茅台"_s},
                                               {u"SH601999"_s, u"新股"_s},
                                               {u"SZ000001"_s, u"平安银行"_s}};
    PracticeMarket market(PracticeQuotes(stocks), &QDateTime::currentDateTime,
                          PracticeBoards(stocks));
    market.start();
    http_.client = std::make_unique<QtHttpClient>();
    const Service list = {market.host(), {}, 10, 1, 0, u"sina"_s};
    const QString ini = environment_.applicationFolder + u"界面.ini"_s;
    const struct {
        const char* name;
        QString host;  // of the quotes
        bool isPractice;
        QString seed;  // makes the table
        bool answer, isAsked;
        QStringList filled = {};
    } cases[] = {
        {"practice", u"http://quotes"_s, true, u"'2026-01-01'"_s, true, false},
        {"services of one's own", u"http://127.0.0.1:1"_s, false, u"'2026-01-01'"_s, true, false},
        {"codes have come since", u"http://quotes"_s, false, u"dm"_s, true, false},
        {"the list can't be read", u"http://quotes"_s, false, u"'2026-01-01'"_s, true, true},
        {"again", u"http://quotes"_s, false, u"'2026-01-01'"_s, true, true, {u"新股"_s}},
        {"it has been read", u"http://quotes"_s, false, u"'2026-01-01'"_s, true, false},
        {"refused", u"http://quotes"_s, false, u"'2026-01-01'"_s, false, true},
        {"not again", u"http://quotes"_s, false, u"'2026-01-01'"_s, true, false},
    };
    for (const auto& it : cases) {
        if (!it.answer) {
            QFile::remove(ini);
        }
        services_.quote = {{it.host, {}}};
        services_.stockList = {list};
        const bool isRead = it.isAsked && !it.filled.isEmpty();
        services_.stockList[0].host = isRead ? market.host() : u"http://127.0.0.1:1"_s;
        store_.run({u"delete from dmb where dm='SH601999'"_s});
        services_.isPractice = it.isPractice;
        store_.run({u"update dmb set newdmtime="_s + it.seed});
        dialogs_.answer = it.answer;
        start({});
        const bool isAsked = std::ranges::any_of(
            dialogs_.shown, [](const QString& shown) { return shown.contains(u"代码表补全"_s); });
        EXPECT_EQ(isAsked, it.isAsked) << it.name;
        auto* form = environment_.openWindows.find<Form35>();
        EXPECT_EQ(form != nullptr, it.isAsked && it.answer) << it.name;
        if (form) {
            until([&] { return child<QPushButton>(form, u"begin"_s)->isEnabled(); });
            form->close();
        }
        EXPECT_EQ(store_.rows(u"select jc from dmb where dm='SH601999'"_s), it.filled) << it.name;
    }
}

}  // namespace guanchao
