#include "collector/search_page.h"

#include "base/activity.h"
#include "collector/search_address.h"
#include "formats/gbk.h"
#include "heat/url_encode.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(SearchPageTest, TheNumberOfResultsIsReadWhateverThePageIsWrittenIn) {
    const QString found = u"为您找到相关结果约12,345个"_s;
    const std::pair<QByteArray, std::optional<qint64>> cases[] = {
        {found.toUtf8(), 12345},
        {gbkFromText(found), 12345},
        {QByteArray("<meta charset=gb2312>") + gbkFromText(found), 12345},
        {u"相关结果<b>约</b> 7 个"_s.toUtf8(), 7},
        {u"相关结果约&nbsp;7\u00a0个"_s.toUtf8(), 7},
        {u"警方没有找到凶手"_s.toUtf8(), std::nullopt},
        {u"很抱歉，没有找到与“x”相关的网页"_s.toUtf8(), 0},
        {u"<script>相关结果约5个</script>请输入验证码"_s.toUtf8(), std::nullopt},
        {u"没有找到相关的网页，请输入验证码"_s.toUtf8(), std::nullopt},
        {u"相关结果约5个 短信验证码"_s.toUtf8(), 5},
        {u"相关结果约99999999999999999999个"_s.toUtf8(), std::nullopt},
        {QByteArray(), std::nullopt},
    };
    for (const auto& [body, results] : cases) {
        EXPECT_EQ(SearchPage(body).results({}), results) << body.toStdString();
    }
    CollectorSettings never;
    never.noResults.setPattern({});
    EXPECT_EQ(SearchPage(u"没有找到相关网页"_s.toUtf8()).results(never), std::nullopt);
}

TEST(SearchPageTest, WordsCountInTheVisibleTextOnly) {
    const std::tuple<QString, QString, int> cases[] = {
        {u"<title>涨</title><style>.涨{}</style><!-- 涨 --><script>'<b>涨'</script>"_s, u"涨"_s, 0},
        {u"<a title=\"x>涨\">铜大<em>涨</em></a>，暴涨后涨"_s, u"涨"_s, 3},
        {u"铜大<em>涨</em>"_s, u"大涨"_s, 1},
        {u"<div>铜大</div><div>涨</div>"_s, u"大涨"_s, 0},
        {u"1 < 2 涨 &#28072; &lt;涨&gt;"_s, u"涨"_s, 3},
    };
    for (const auto& [page, word, count] : cases) {
        EXPECT_EQ(SearchPage(page.toUtf8()).text().count(word), count) << page.toStdString();
    }
}

TEST(SearchAddressTest, ThePatternGivesThePathAndServicesMayGiveTheHost) {
    const QString pattern = u"https://engine.example:8/s?wd=tihuandm&again=tihuandm"_s;
    const SearchAddress own(pattern, {}, 15);
    EXPECT_EQ(own.service().host, u"https://engine.example:8"_s);
    EXPECT_EQ(own.service().timeoutSeconds, 15);
    EXPECT_EQ(own.path(withoutMarks(u"A/B-(C)_\"铜"_s), u"&lm=1"_s),
              u"/s?wd=A%20B%20%20C%20%20%20%CD%AD&again=A%20B%20%20C%20%20%20%CD%AD&lm=1"_s);
    EXPECT_EQ(SearchAddress(u"http://h/s?wd=tihuandm"_s, {}, 15).path(u"C#"_s, u"&lm=1"_s),
              u"/s?wd=C%23&lm=1"_s);
    EXPECT_EQ(SearchAddress(pattern, {u"http://h"_s, {}, 3}, 15).service().host, u"http://h"_s);
    EXPECT_EQ(SearchAddress(pattern, {u"http://h"_s, {}, 3}, 15).service().timeoutSeconds, 3);
    for (const QString& bad : {u""_s, u"engine/s?wd=tihuandm"_s, u"http://engine/s?wd="_s}) {
        EXPECT_THROW(SearchAddress(bad, {}, 15), OperationError) << bad.toStdString();
    }
}

}  // namespace guanchao
