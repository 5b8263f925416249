// The text of the one box that an operation ends in when it fails.
#pragma once

#include <QString>
#include <exception>

namespace guanchao {

// Says in Chinese what was being done and why it failed, with the store's own message.
QString failureText(const std::exception& failure);

}  // namespace guanchao
