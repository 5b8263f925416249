// A monitor that has fired, as it is told to the user.
#pragma once

#include <QString>

namespace guanchao {

struct FiredMonitor {
    enum class Kind : std::uint8_t { theme, stock };

    Kind kind = Kind::theme;
    QString key;    // the theme's name or the stock's code, without blanks around it
    QString words;  // "浦发银行 股价 10.6 > 10.5"
};

}  // namespace guanchao
