#include "articles/body_text.h"

#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool endsSentence(QChar c) {
    return u"。！？；.!?; "_s.contains(c);
}

qsizetype pieceLength(QStringView text) {
    const auto lastSentence = std::find_if(text.rbegin(), text.rend(), endsSentence);
    const qsizetype sentences = text.rend() - lastSentence;
    if (sentences > text.size() / 2) {
        return sentences;
    }
    return text.back().isHighSurrogate() ? text.size() - 1 : text.size();
}

}  // namespace

QStringList paragraphsOf(QString text) {
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
    text.replace(QChar::ParagraphSeparator, u'\n');
    return text.split(u'\n');
}

bool hasHugeParagraph(const QString& text) {
    const QStringList paragraphs = paragraphsOf(text);
    return std::any_of(paragraphs.begin(), paragraphs.end(),
                       [](const QString& it) { return it.size() > longestPiece; });
}

QStringList piecesOf(const QString& paragraph) {
    QStringList pieces;
    QStringView rest = paragraph;
    while (rest.size() > longestPiece) {
        const qsizetype length = pieceLength(rest.first(longestPiece));
        pieces << rest.first(length).toString();
        rest = rest.sliced(length);
    }
    return pieces << rest.toString();
}

QString withLineEndsOf(const QString& stored, QString text) {
    return stored.contains(u"\r\n"_s) ? text.replace(u'\n', u"\r\n"_s) : text;
}

}  // namespace guanchao
