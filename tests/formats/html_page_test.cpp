#include "formats/html_page.h"

#include "formats/gbk.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(HtmlPage, ShapesOfTables) {
    const std::pair<const char*, QList<HtmlTable>> cases[] = {
        {"", {}},
        {"<p>a</p>", {}},
        {"<TABLE></TABLE><table><tr></table>", {{}, {{}}}},
        {"<table><tr><td>a<td>b<tr><th>c</table>", {{{u"a"_s, u"b"_s}, {u"c"_s}}}},
        {"<table><tfoot><tr><td>f</tfoot><tr><td>b</tr><thead><tr><td>h</thead></table>",
         {{{u"h"_s}, {u"b"_s}, {u"f"_s}}}},
        {"<table><tbody><tr><form><td>a</td><td>b</td></form></tr></table>", {{{u"a"_s, u"b"_s}}}},
        // The outer one begins first, and has one row of two cells.
        {"<table><tr><td>a<table><tr><td>x</td><td>y<tr><td>z</table></td><td>b</table>",
         {{{u"a\nx\ty\nz"_s, u"b"_s}}, {{u"x"_s, u"y"_s}, {u"z"_s}}}},
        {"<table><tr><td>a<tr><td>b", {{{u"a"_s}, {u"b"_s}}}},
        // Cells outside of any row.
        {"<table><td>a<td>b<tr><td>c<td>d</table>", {{{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}}}},
        {"<table><tr><td>a</tr><td>b</td><tbody><td>c<td>d</tbody><td>e</table>",
         {{{u"a"_s}, {u"b"_s}, {u"c"_s, u"d"_s}, {u"e"_s}}}},
        {"<table><tr><td> \n a <b>b</b>c&nbsp<td>&nbsp;&nbsp<td>1&lt;2&amp;'<td>x <br> "
         "y<td><p>p</p>q",
         {{{u"a bc"_s, QString(), u"1<2&'"_s, u"x\ny"_s, u"p\nq"_s}}}},
        {"<table><tr><td>a<!--x--><script>'<td>'</script><style>s</style></table>", {{{u"a"_s}}}},
    };
    for (const auto& [page, tables] : cases) {
        EXPECT_EQ(readHtmlPage(page).tables, tables) << page;
    }
}

TEST(HtmlPage, APageIsReadAsItDeclares) {
    const QString title = u"<title>找不到</title>"_s;
    for (const QByteArray& page : std::initializer_list<QByteArray>{
             gbkFromText(title), "<meta charset=gb2312>" + gbkFromText(title),
             "<script charset=utf-8></script><meta charset=gbk>" + gbkFromText(title),
             title.toUtf8(), "<META content='text/html; charset=GBK'>" + gbkFromText(title),
             "<meta charset=\"utf-8\">" + title.toUtf8(), "\xEF\xBB\xBF" + title.toUtf8()}) {
        EXPECT_EQ(readHtmlPage(page).title, u"找不到"_s) << page.toStdString();
    }
    EXPECT_TRUE(readHtmlPage(QByteArray("<div>").repeated(100000)).tables.isEmpty());
}

}  // namespace guanchao
