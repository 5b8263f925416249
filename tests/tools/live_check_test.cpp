#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/files.h"
#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// The real program, on a practice market with all kinds.
class LiveCheckTest : public ::testing::Test {
protected:
    struct Run {
        int exitCode = 0;
        QStringList rows;  // below the heading, blanks made one
        QString end;
    };

    LiveCheckTest() { market_.start(); }

    QString section(const QString& name, const QString& rest) const {
        return u'[' + name + u"]\nhost="_s + market_.host() + u'\n' + rest + u'\n';
    }

    // With those sections, and all others on the market.
    Run check(const QString& quotes, const QString& history) const {
        QString ini = quotes + history;
        for (const QString& kind :
             {u"history.2/tencent"_s, u"history.3/eastmoney"_s, u"history.4/csv"_s,
              u"factors/sina"_s, u"fundamentals/sina"_s, u"fundamentals.2/page"_s, u"boards/sina"_s,
              u"boards.2/eastmoney"_s, u"stocklist/sina"_s, u"stocklist.2/eastmoney"_s,
              u"search.2/eastmoney"_s}) {
            ini += section(kind.section(u'/', 0, 0),
                           u"kind="_s + kind.section(u'/', 1) + u"\nreferer=http://here/"_s);
        }
        for (const QString& name :
             {u"chart"_s, u"stockpage"_s, u"sitepage"_s, u"newspage"_s, u"vendor"_s, u"search"_s}) {
            ini += section(name, {});
        }
        writeFile(folder_.filePath(u"services.ini"_s), ini.toUtf8());
        QProcess program;
        program.start(QStringLiteral(GUANCHAO_LIVE_CHECK), {u"--pause"_s, u"0"_s, folder_.path()});
        program.waitForFinished();
        QStringList lines;
        for (const QString& line :
             QString::fromUtf8(program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts)) {
            lines << line.simplified();
        }
        return {program.exitCode(), lines.mid(2, lines.size() - 3), lines.value(lines.size() - 1)};
    }

    static QStringList with(const QStringList& rows, const QString& word) {
        return rows.filter(u' ' + word + u' ');
    }

    QTemporaryDir folder_;
    PracticeMarket market_{
        PracticeQuotes({{u"SH600036"_s, u"招商银行"_s}}),
        [] { return QDateTime::currentDateTime(); },
        PracticeBoards({{u"SH600036"_s, u"招商银行"_s}}, {{u"银行"_s, u"SH600036"_s}})};
};

TEST_F(LiveCheckTest, EachServiceIsAskedAndToldOnce) {
    const QString sina = section(u"quote"_s, u"kind=sina"_s);
    const QString tencent = section(u"quote.2"_s, u"kind=tencent"_s);
    const QString history = section(u"history"_s, u"kind=sina"_s);
    const Run run = check(sina + tencent, history);
    EXPECT_EQ(run.exitCode, 0) << run.end.toStdString();
    EXPECT_EQ(run.end, u"每一种用途都有网站应答。"_s);
    EXPECT_EQ(run.rows.size(), 25);
    EXPECT_EQ(with(run.rows, u"通"_s).size(), 25) << run.rows.join(u'\n').toStdString();
    const QStringList days = run.rows.filter(u"历史行情（股票）"_s);
    ASSERT_EQ(days.size(), 4);
    for (const QString& row : days) {
        EXPECT_EQ(row.section(u' ', 5), days[0].section(u' ', 5)) << "all kinds tell the same";
    }
    EXPECT_TRUE(
        run.rows.filter(u"有分红"_s).first().contains(u"今天的因子 1.0472，2010-01-04 的 1"_s));
}

TEST_F(LiveCheckTest, AKindThatFailsIsToldAndOneThatAnswersIsEnough) {
    market_.setReferer(u"http://here/"_s);
    const QString right = u"referer=http://here/"_s;
    const QString sina = section(u"quote"_s, u"kind=sina"_s);
    const QString tencent = section(u"quote.2"_s, u"kind=tencent\n"_s + right);
    const QString dead = u"[history]\nkind=sina\nhost=http://127.0.0.1:1\n"_s;
    const Run one = check(sina + tencent, dead);
    const QStringList failed = with(one.rows, u"不通"_s);
    ASSERT_EQ(failed.size(), 3) << one.rows.join(u'\n').toStdString();
    EXPECT_TRUE(failed[0].endsWith(u"被拒绝（403）；应答开头：Kinsoku jikou desu!"_s));
    EXPECT_TRUE(failed[1].startsWith(u"历史行情（股票） 不通 新浪 "_s));
    EXPECT_TRUE(failed[2].endsWith(u"http://127.0.0.1:1 连接不上：Connection refused"_s));
    EXPECT_EQ(one.exitCode, 0);

    market_.setFault(MarketFault::errorPage);
    const Run none = check(sina + right + u'\n' + tencent, dead);
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.end, u"没有网站应答的用途：行情。"_s) << "fundamentals have the page";
    EXPECT_TRUE(with(none.rows, u"不通"_s)[0].endsWith(
        u"应答里没有行情；应答开头：<html><head><title>502 Bad Gateway</title></head><body><h1>502 "
        u"Bad Gateway</h1><"_s))
        << none.rows.join(u'\n').toStdString();
}

}  // namespace guanchao
