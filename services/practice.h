// 练习行情: a folder whose services.ini has a section [practice] asks services of this computer,
// whose prices are made up.
#pragma once

#include <QString>
#include <optional>

#include "services/services.h"

namespace guanchao {

// Whose the services are, in Chinese: those for practice, those that the program brings along, or
// that the user has written in others.
QString marketWords(const Services& services);

// For the bands of windows, in Chinese: that prices are made up, or which services of the folder
// are real for all that. Empty in a folder that is none for practice.
QString practiceWords(const Services& services);

// A real service that the program would ask by `next` and doesn't ask now; none in a folder that is
// none for practice.
std::optional<Service> realNewcomer(const Services& now, const Services& next);

// Raises OperationError for a service elsewhere, in a folder for practice.
void refuseReal(const Services& services, const QString& host);

}  // namespace guanchao
