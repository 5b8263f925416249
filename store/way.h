// Which way an edit is carried out a second time.
#pragma once

#include <cstdint>

namespace guanchao {

enum class Way : std::uint8_t { back, again };

}  // namespace guanchao
