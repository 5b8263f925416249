// The initials (声母) of a short name, as the stock picker compares them, from ICU's readings of
// Chinese characters and a small table of words that these get wrong.
#pragma once

#include <QHash>
#include <QString>
#include <memory>

namespace guanchao {

class Initials {
public:
    // `exceptions` maps a word to its initials, one letter a character; the longest word wins.
    // Raises std::runtime_error if ICU has no Chinese readings.
    explicit Initials(QHash<QString, QString> exceptions);
    ~Initials();

    // 贵州茅台 gives gzmt, *ST中安 gives *stza: lower case, other characters as they are.
    QString of(const QString& shortName) const;

    // The reading of one character, lower case without tone; empty if it has none.
    QString reading(QChar character) const;

private:
    struct Reader;

    QString initialOf(QChar character) const;

    QHash<QString, QString> exceptions_;
    qsizetype longest_ = 0;
    std::unique_ptr<Reader> reader_;
};

// Of words in which a character isn't read as it mostly is, as names of themes and commands have
// them.
QHash<QString, QString> commonExceptions();

// The words of a seed list of exceptions. Raises std::runtime_error if it can't be read.
QHash<QString, QString> readInitialsExceptions(const QString& path);

}  // namespace guanchao
