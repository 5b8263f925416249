#include "platform/qt_http_client.h"
#include "tests/app/form2_fixture.h"
#include "tools/practice_market/practice_market.h"
#include "utilities/form34.h"

namespace guanchao {

// The program over two real services of quotes.
class ServiceLineTest : public Form2Test {
protected:
    ServiceLineTest() {
        http_.client = std::make_unique<QtHttpClient>();
        firstPort_ = first_.start();
        second_.start();
        writeFile(store_.folder() + u"services.ini"_s,
                  u"[quote]\nkind=sina\nhost=%1\n[quote.2]\nkind=tencent\nhost=%2\n"_s
                      .arg(first_.host(), second_.host())
                      .toUtf8());
        services_ = readServices(store_.folder() + u"services.ini"_s);
        load();
        activate();
    }

    // Where the quotes have come from since the last time, by a user's F9.
    QString update() {
        const auto counts = [this] {
            return std::pair(first_.requests().size(), second_.requests().size());
        };
        const auto before = counts();
        clock_.moment = clock_.moment.addSecs(90);
        dialogs_.shown.clear();
        QTest::keyClick(&main_, Qt::Key_F9);
        until([this] { return !dialogs_.shown.isEmpty(); });
        EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|更新行情数据完成！"_s});
        const auto after = counts();
        return (after.first > before.first ? u"first "_s : QString()) +
               (after.second > before.second ? u"second"_s : QString());
    }
    // By the timer of the line itself.
    bool comesToSay(const QString& words) {
        auto* line = button(u"serviceLine"_s);
        return QTest::qWaitFor(
            [&] { return line->isVisible() == !words.isEmpty() && line->text() == words; });
    }

    static PracticeMarket market() {
        return {PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}, {u"SH600519"_s, u"贵州茅台"_s}}),
                [] { return QDateTime(QDate(2026, 11, 24), QTime(10, 0)); }};
    }
    PracticeMarket first_ = market();
    PracticeMarket second_ = market();
    int firstPort_ = 0;
};

TEST_F(ServiceLineTest, QuotesGoOnAndTheLineTellsWhileTheFirstServiceIsDown) {
    EXPECT_EQ(update(), u"first "_s);
    first_.stop();
    EXPECT_EQ(update(), u"second"_s);
    auto* line = button(u"serviceLine"_s);
    timeIsUp(timer(u"serviceLooks"_s));
    EXPECT_FALSE(line->isVisible()) << "a single miss";
    EXPECT_EQ(update(), u"second"_s);
    EXPECT_TRUE(comesToSay(u"行情：新浪 10:03 起连接不上，在用腾讯"_s))
        << line->text().toStdString();
    line->setFocus();
    QTest::keyClick(line, Qt::Key_Space);
    EXPECT_NE(shownWindow<Form34>(), nullptr);
    activate();
    first_.start(firstPort_);
    EXPECT_EQ(update(), u"first "_s);
    EXPECT_TRUE(comesToSay({}));
}

}  // namespace guanchao
