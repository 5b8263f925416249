// What a kind of quote service is: how it is asked for codes, and its reply in the lines that
// services/quote_reply reads, whatever its own shape.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

namespace guanchao {

class QuoteKind {
public:
    virtual ~QuoteKind() = default;

    // Whether it can be asked for all of the codes. `codes` in lower case, with commas between them
    // and maybe one behind the last: sh600000,sz399001,int_dji
    virtual bool knows(const QString& codes) const = 0;
    virtual QString path(const QString& codes) const = 0;
    // What the service doesn't know has an empty line.
    virtual QString lines(const QByteArray& body, const QString& codes) const = 0;
};

// By the name that services.ini gives it; sina for one that it doesn't name.
std::unique_ptr<QuoteKind> quoteKind(const QString& name);

}  // namespace guanchao
