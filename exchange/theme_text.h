// The rules of theme text files: separators, the two parts of a line, codes and theme names. Pure
// functions on texts; nothing here fails.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace guanchao {

// What the user has declared about a text file. The separators are the texts of the boxes.
struct TextSource {
    QString path;
    bool codeFirst = true;  // else the first column is the theme name
    QString firstSeparator;
    QString secondSeparator;
};

// The entries that the separator boxes offer.
QStringList separatorEntries();

// The separator of an entry; any other text is a separator as it stands.
QString separatorOf(const QString& entry);

struct LineParts {
    QString first;   // untrimmed
    QString second;  // trimmed; begins with the tail of a separator of several characters
};

// Nothing if the line doesn't hold the separator.
std::optional<LineParts> splitLine(const QString& line, const QString& separator);

// The pieces of the second part, trimmed; none for an empty part.
QStringList splitPieces(const QString& second, const QString& separator);

struct NormalCode {
    QString code;
    bool wellFormed = false;
};

// Cuts what is too long, tests the beginning, and puts the market in front of six characters. A
// malformed code comes back as far as it was brought.
NormalCode normaliseCode(const QString& code);

bool isDigitsOnly(const QString& name);
// Over 20 characters.
bool isTooLong(const QString& name);
// Not empty, and neither of these.
bool canNameTheme(const QString& name);

}  // namespace guanchao
