// Opens files and addresses with the system's default program for them.
#pragma once

#include <QString>

namespace guanchao {

class Shell {
public:
    virtual ~Shell() = default;

    // Returns at once; what can't be opened is the system's affair.
    virtual void open(const QString& target) = 0;
};

}  // namespace guanchao
