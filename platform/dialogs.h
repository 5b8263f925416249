// The questions and answers that go to the user. Each call returns when the user has answered.
#pragma once

#include <QString>

namespace guanchao {

inline const QString programName = QStringLiteral("观潮台");

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // An answer or a refusal: exclamation icon and OK.
    virtual void tell(const QString& text, const QString& title = programName) = 0;

    // A question: information icon, OK and Cancel; true only for OK.
    virtual bool ask(const QString& text, const QString& title = programName) = 0;
};

}  // namespace guanchao
