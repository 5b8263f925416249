// How the body of an article is shown: the box in which it is read and typed knows one kind of line
// end and is slow where a paragraph is huge, so such a paragraph is shown in pieces.
#pragma once

#include <QString>
#include <QStringList>

namespace guanchao {

// Paragraphs up to this length are one piece.
inline constexpr qsizetype longestPiece = 10000;

// The paragraphs of a text, whatever ends its lines; one more than it has line ends.
QStringList paragraphsOf(QString text);

// Whether a paragraph is longer than a piece.
bool hasHugeParagraph(const QString& text);

// The pieces of one paragraph, cut at the end of a sentence where one is near.
QStringList piecesOf(const QString& paragraph);

// A changed text as it is to be stored: with the line ends of the article.
QString withLineEndsOf(const QString& stored, QString text);

}  // namespace guanchao
