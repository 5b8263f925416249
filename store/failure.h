// The text of the one box that an operation ends in when it fails.
#pragma once

#include <QString>
#include <exception>

namespace guanchao {

// The first one tells a failure without the words of users. The other two are asked for where it is
// told to the user, and note it in the log.

// Why it failed, as the log and the diagnosis tell it; notes nothing.
QString loggedReason(const std::exception& failure);

// Why it failed, in one line of Chinese where the reason is one that a user can do something about.
QString failureReason(const std::exception& failure);

// Says in Chinese what was being done, why it failed and what is to be done, with the store's own
// message where nothing else tells the reason.
QString failureText(const std::exception& failure);

}  // namespace guanchao
