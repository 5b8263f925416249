#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/files.h"
#include "tests/support/small_market.h"

namespace guanchao {

// The real program, on a practice market with all kinds.
class LiveCheckTest : public ::testing::Test {
protected:
    QString section(const QString& name, const QString& rest) const {
        return u'[' + name + u"]\nhost="_s + market_.host() + u'\n' + rest + u'\n';
    }

    // With those sections, and all others on the market: its exit code. The rows stand below a
    // heading, with single blanks.
    int check(const QString& quotes, const QString& history) {
        QString ini = quotes + history;
        for (const QString& it :
             {u"history.2/tencent"_s, u"history.3/eastmoney"_s, u"history.4/csv"_s,
              u"factors/sina"_s, u"fundamentals/sina"_s, u"fundamentals.2/page"_s, u"boards/sina"_s,
              u"boards.2/eastmoney"_s, u"stocklist/sina"_s, u"stocklist.2/eastmoney"_s, u"chart"_s,
              u"stockpage"_s, u"sitepage"_s, u"newspage"_s, u"vendor"_s, u"search"_s,
              u"search.2/eastmoney"_s}) {
            const QString kind = it.section(u'/', 1);
            ini += section(it.section(u'/', 0, 0),
                           (kind.isEmpty() ? QString() : u"kind="_s + kind + u'\n') +
                               u"referer=http://here/"_s);
        }
        writeFile(folder_.filePath(u"services.ini"_s), ini.toUtf8());
        QProcess program;
        program.start(QStringLiteral(GUANCHAO_LIVE_CHECK), {u"--pause"_s, u"0"_s, folder_.path()});
        program.waitForFinished();
        const QString said = QString::fromUtf8(program.readAllStandardOutput());
        rows_ = textsOf(said.split(u'\n', Qt::SkipEmptyParts).mid(2),
                        [](const QString& line) { return line.simplified(); });
        end_ = rows_.isEmpty() ? QString() : rows_.takeLast();
        return program.exitCode();
    }
    QStringList rowsWith(const QString& word) const { return rows_.filter(u' ' + word + u' '); }

    QStringList rows_;
    QString end_;
    QTemporaryDir folder_;
    SmallMarket market_{{{u"SH600036"_s, u"招商银行"_s}}, {{u"银行"_s, u"SH600036"_s}}};
};

TEST_F(LiveCheckTest, EachServiceIsAskedAndToldOnce) {
    const QString sina = section(u"quote"_s, u"kind=sina"_s);
    const QString tencent = section(u"quote.2"_s, u"kind=tencent"_s);
    EXPECT_EQ(check(sina + tencent, section(u"history"_s, u"kind=sina"_s)), 0);
    EXPECT_EQ(end_, u"每一种用途都有网站应答。"_s);
    EXPECT_EQ(rows_.size(), 25);
    EXPECT_EQ(rowsWith(u"通"_s), rows_);
    const QStringList days = rows_.filter(u"历史行情（股票）"_s);
    ASSERT_EQ(days.size(), 4);
    for (const QString& row : days) {
        EXPECT_EQ(row.section(u' ', 5), days[0].section(u' ', 5)) << "all kinds tell the same";
    }
    EXPECT_TRUE(holds(rows_.filter(u"有分红"_s).value(0), u"今天的因子 1.0472，2010-01-04 的 1"_s));
}

TEST_F(LiveCheckTest, AKindThatFailsIsToldAndOneThatAnswersIsEnough) {
    market_.setReferer(u"http://here/"_s);
    const QString right = u"referer=http://here/"_s;
    const QString sina = section(u"quote"_s, u"kind=sina"_s);
    const QString tencent = section(u"quote.2"_s, u"kind=tencent\n"_s + right);
    const QString dead = u"[history]\nkind=sina\nhost=http://127.0.0.1:1\n"_s;
    EXPECT_EQ(check(sina + tencent, dead), 0);
    const QStringList failed = rowsWith(u"不通"_s);
    ASSERT_EQ(failed.size(), 3) << rows_.join(u'\n').toStdString();
    EXPECT_TRUE(failed[0].endsWith(u"被拒绝（403）；应答开头：Kinsoku jikou desu!"_s));
    EXPECT_TRUE(begins(failed[1], u"历史行情（股票） 不通 新浪 "_s));
    EXPECT_TRUE(failed[2].endsWith(u"http://127.0.0.1:1 连接不上：Connection refused"_s));

    market_.setFault(MarketFault::errorPage);
    EXPECT_EQ(check(sina + right + u'\n' + tencent, dead), 1);
    EXPECT_EQ(end_, u"没有网站应答的用途：行情。"_s) << "fundamentals have the page";
    EXPECT_TRUE(holds(rowsWith(u"不通"_s).value(0),
                      u"应答里没有行情；应答开头：<html><head><title>502 Bad Gateway</title>"_s));
}

}  // namespace guanchao
