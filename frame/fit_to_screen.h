// Windows that are no larger than their screen, with the frame that the desktop puts around them.
#pragma once

#include <QScreen>
#include <QWidget>

namespace guanchao {

inline void fitToScreen(QWidget& window) {
    constexpr QSize frame(16, 40);
    window.resize(window.size().boundedTo(window.screen()->availableSize() - frame));
}

}  // namespace guanchao
