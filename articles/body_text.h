// The body of an article between the store and the box in which it is read and typed. The box knows
// one kind of line end and is slow where a paragraph is huge: such a paragraph is shown in pieces.
#pragma once

#include <QString>

namespace guanchao {

class BodyText {
public:
    // As the store holds it.
    explicit BodyText(const QString& stored = {});

    const QString& stored() const { return stored_; }
    const QString& shown() const { return shown_; }

    // What is to be stored for a shown text that was changed: with the line ends of the article,
    // and the pieces of a paragraph joined. A break between pieces that lost its mark is a line
    // end.
    QString toStore(const QString& shown) const;

    // A part of the shown text as the user means it.
    QString joined(const QString& shown) const;

    // Paragraphs up to this length are shown as they are.
    static constexpr int longestPiece = 10000;

private:
    QString stored_;
    QString shown_;
};

}  // namespace guanchao
