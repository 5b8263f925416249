// The readers of what comes from outside, as the campaign feeds them.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>
#include <stdexcept>

namespace guanchao {

// What a reader gave is not what it says it gives.
struct Nonsense : std::logic_error {
    using std::logic_error::logic_error;
};

inline void requireSense(bool makesSense, const char* words) {
    if (!makesSense) {
        throw Nonsense(words);
    }
}

// Half a character could be neither stored nor shown.
void requireWholeCharacters(QStringView text);

struct OutsideReader {
    QByteArray name;
    const char* what;  // in the user's words
    int times;         // of the million
    bool mayRefuse;    // by a std::runtime_error; others take whatever comes
    QList<QByteArray> wellFormed;
    std::function<void(const QByteArray&)> read;
};

// Those that read by themselves, and those that read into stores. `folder` is theirs to write to.
QList<OutsideReader> pageReaders();
QList<OutsideReader> fileReaders(const QString& folder);
QList<OutsideReader> storeReaders();

}  // namespace guanchao
