// Whether the desktop's own windows are dark or light, for programs that follow it.
#pragma once

#include <functional>
#include <optional>

namespace guanchao {

class ColourScheme {
public:
    virtual ~ColourScheme() = default;
    // Nothing as long as the desktop has not said, or where it doesn't care.
    virtual std::optional<bool> isDark() const = 0;
    // Called whenever that changes.
    virtual void whenChanged(std::function<void()> changed) = 0;
};

}  // namespace guanchao
