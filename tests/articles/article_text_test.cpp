#include "articles/article_text.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "articles/body_text.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(BodyTextTest, ChangedTextsKeepTheLineEndsOfTheirArticle) {
    const std::tuple<QString, QString, QString> cases[] = {
        {u""_s, u"a\nb"_s, u"a\nb"_s},
        {u"a\n"_s, u"a\nb\n"_s, u"a\nb\n"_s},
        {u"a\r\n"_s, u"a\nb\n\n"_s, u"a\r\nb\r\n\r\n"_s},
    };
    for (const auto& [stored, shown, toStore] : cases) {
        EXPECT_EQ(withLineEndsOf(stored, shown), toStore) << stored.toStdString();
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

// Each case begins with the cursor at the visible end of the first of two pieces.
TEST(ArticleTextTest, TheBreaksOfPiecesAreNoPartOfTheText) {
    const QString first = u"字"_s.repeated(longestPiece);
    const auto key = [](Qt::Key it) {
        return [it](ArticleText& text) { QTest::keyClick(&text, it); };
    };
    const auto type = [](ArticleText& text) { QTest::keyClicks(&text, u"x"_s); };
    const auto undo = [](ArticleText& text) { text.undo(); };
    const auto paste = [](ArticleText& text) {
        QApplication::clipboard()->setText(u"甲\r\n乙"_s);
        text.paste();
    };
    const auto cutFirst = [&](ArticleText& text) {
        QTextCursor cursor = text.textCursor();
        cursor.setPosition(2);
        cursor.setPosition(static_cast<int>(2 + first.size() + 1), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    };
    using Acts = QList<std::function<void(ArticleText&)>>;
    const std::tuple<const char*, Acts, QString> cases[] = {
        {"typed", {type}, first + u"x尾"_s},
        {"a line end", {key(Qt::Key_Return), type}, first + u"\nx尾"_s},
        {"a line end behind", {key(Qt::Key_Right), key(Qt::Key_Return)}, first + u"\n尾"_s},
        {"typed behind the break", {key(Qt::Key_Right), type}, first + u"x尾"_s},
        {"the break removed", {key(Qt::Key_Delete), type}, first + u"x尾"_s},
        {"and taken back", {key(Qt::Key_Delete), undo, type}, first + u"x尾"_s},
        {"pasted", {paste}, first + u"甲\n乙尾"_s},
        {"the first piece cut", {cutFirst}, u"尾"_s},
    };
    for (const auto& [name, acts, expected] : cases) {
        ArticleText text;
        text.setText(u"前\n"_s + first + u"尾"_s);
        QTextCursor cursor = text.textCursor();
        cursor.setPosition(static_cast<int>(2 + first.size()));
        text.setTextCursor(cursor);
        for (const auto& act : acts) {
            act(text);
        }
        EXPECT_EQ(text.text().size(), 2 + expected.size()) << name;
        EXPECT_TRUE(text.text() == u"前\n"_s + expected) << name;
    }
}

}  // namespace guanchao
