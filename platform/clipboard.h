// The system's clipboard.
#pragma once

#include <QString>

namespace guanchao {

class Clipboard {
public:
    virtual ~Clipboard() = default;

    // Clears the clipboard and puts the text on it.
    virtual void setText(const QString& text) = 0;

    // What other programs put on it, as text; empty if it holds none.
    virtual QString text() const = 0;
};

}  // namespace guanchao
