#include "articles/body_text.h"

#include <gtest/gtest.h>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int longest = BodyText::longestPiece;

// What a text box makes of a text: it knows one line end.
QString boxed(const BodyText& body) {
    return QString(body.shown()).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

}  // namespace

TEST(BodyTextTest, ChangedTextsKeepTheLineEndsOfTheirArticle) {
    const struct {
        QString stored, shown, toStore;
    } cases[] = {
        {u""_s, u"a\nb"_s, u"a\nb"_s},
        {u"a\n"_s, u"a\nb\n"_s, u"a\nb\n"_s},
        {u"a\r\n"_s, u"a\nb\n\n"_s, u"a\r\nb\r\n\r\n"_s},
    };
    for (const auto& it : cases) {
        const BodyText body(it.stored);
        EXPECT_EQ(body.stored(), it.stored);
        EXPECT_EQ(body.toStore(it.shown), it.toStore) << it.stored.toStdString();
    }
}

TEST(BodyTextTest, HugeParagraphsAreShownInPiecesAndStoredWhole) {
    const QString sentence = u"板块放量上涨，龙头收于高位。"_s;
    const QString pair = u"𠮷"_s;
    const struct {
        const char* name;
        QString stored;
        qsizetype pieces;
    } cases[] = {
        {"an ordinary paragraph", u"字"_s.repeated(longest), 1},
        {"one character more", u"字"_s.repeated(longest + 1), 2},
        {"between ordinary ones", u"字\r\n"_s.repeated(longest), longest + 1},
        {"sentences", sentence.repeated(3 * longest / sentence.size()), 3},
        {"pairs are not divided", u"a"_s + pair.repeated(longest), 3},
        {"the mark itself", u"\u206f字"_s.repeated(longest), 1},
    };
    for (const auto& it : cases) {
        const BodyText body(it.stored);
        const QStringList pieces = boxed(body).split(u'\n');
        EXPECT_EQ(pieces.size(), it.pieces) << it.name;
        EXPECT_EQ(body.toStore(boxed(body)), it.stored) << it.name;
        for (const QString& piece : pieces) {
            EXPECT_FALSE(piece.startsWith(pair.at(1))) << it.name;
        }
    }
    EXPECT_TRUE(BodyText(cases[3].stored).shown().section(u'\n', 0, 0).chopped(1).endsWith(u'。'));
}

TEST(BodyTextTest, ABreakThatLostItsMarkIsALineEnd) {
    const BodyText body(u"字"_s.repeated(longest) + u"尾"_s);
    QString typed = body.shown();
    const qsizetype mark = typed.indexOf(u'\n') - 1;
    EXPECT_EQ(body.toStore(QString(typed).insert(mark, u"新\n"_s)),
              u"字"_s.repeated(longest) + u"新\n尾"_s);
    EXPECT_EQ(body.toStore(QString(typed).remove(mark + 1, 1)), body.stored()) << "joined by hand";
    EXPECT_EQ(body.toStore(typed.remove(mark, 1)), u"字"_s.repeated(longest) + u"\n尾"_s);
}

}  // namespace guanchao
