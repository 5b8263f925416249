#include "articles/body_text.h"

#include <algorithm>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A formatting character without width, which no text has used since Unicode took it back.
constexpr QChar pieceMark(0x206F);
const QString pieceEnd = QString(pieceMark) + u'\n';

bool endsLine(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator;
}

bool endsSentence(QChar c) {
    return u"。！？；.!?; "_s.contains(c);
}

// The length of the beginning of `text` up to the last character that `ends`; 0 if there is none.
qsizetype lengthUpTo(QStringView text, bool (*ends)(QChar)) {
    const auto last = std::find_if(text.rbegin(), text.rend(), ends);
    return text.rend() - last;
}

qsizetype pieceLength(QStringView text) {
    const qsizetype sentences = lengthUpTo(text, endsSentence);
    if (sentences > text.size() / 2) {
        return sentences;
    }
    return text.back().isHighSurrogate() ? text.size() - 1 : text.size();
}

QString inPieces(const QString& text) {
    QString pieces;
    QStringView rest = text;
    while (rest.size() > BodyText::longestPiece) {
        const QStringView start = rest.first(BodyText::longestPiece);
        qsizetype length = lengthUpTo(start, endsLine);
        if (length > 0) {
            pieces += start.first(length);
        } else {
            length = pieceLength(start);
            pieces += start.first(length);
            pieces += pieceEnd;
        }
        rest = rest.sliced(length);
    }
    return pieces + rest;
}

}  // namespace

BodyText::BodyText(const QString& stored)
    : stored_(stored), shown_(stored.contains(pieceMark) ? stored : inPieces(stored)) {}

QString BodyText::toStore(const QString& shown) const {
    QString text = joined(shown);
    return stored_.contains(u"\r\n"_s) ? text.replace(u'\n', u"\r\n"_s) : text;
}

QString BodyText::joined(const QString& shown) const {
    if (stored_.contains(pieceMark)) {
        return shown;
    }
    return QString(shown).remove(pieceEnd).remove(pieceMark);
}

}  // namespace guanchao
