#include "articles/body_text.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(BodyTextTest, ChangedTextsKeepTheLineEndsOfTheirArticle) {
    const struct {
        QString stored, shown, toStore;
    } cases[] = {
        {u""_s, u"a\nb"_s, u"a\nb"_s},
        {u"a\n"_s, u"a\nb\n"_s, u"a\nb\n"_s},
        {u"a\r\n"_s, u"a\nb\n\n"_s, u"a\r\nb\r\n\r\n"_s},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(withLineEndsOf(it.stored, it.shown), it.toStore) << it.stored.toStdString();
    }
    EXPECT_EQ(paragraphsOf(u"a\r\nb\rc\n\nd\n"_s),
              QStringList({u"a"_s, u"b"_s, u"c"_s, {}, u"d"_s, {}}));
}

TEST(BodyTextTest, HugeParagraphsAreCutIntoPieces) {
    const QString sentence = u"板块放量上涨，龙头收于高位。"_s;
    const QString pair = u"𠮷"_s;
    const QPair<QString, qsizetype> cases[] = {
        {{}, 1},
        {u"字"_s.repeated(longestPiece), 1},
        {u"字"_s.repeated(longestPiece + 1), 2},
        {sentence.repeated(3 * longestPiece / sentence.size()), 3},
        {u"a"_s + pair.repeated(longestPiece), 3},  // pairs are not divided
    };
    for (const auto& [paragraph, count] : cases) {
        const QStringList pieces = piecesOf(paragraph);
        EXPECT_EQ(pieces.size(), count);
        EXPECT_TRUE(pieces.join(QString()) == paragraph);
        EXPECT_FALSE(pieces.last().startsWith(pair.at(1)));
    }
    EXPECT_TRUE(piecesOf(cases[3].first).first().endsWith(u'。'));
}

}  // namespace guanchao
