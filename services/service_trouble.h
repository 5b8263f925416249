// What the main window tells of services that fail time and again.
#pragma once

#include <QStringList>

#include "services/service_watch.h"
#include "services/services.h"

namespace guanchao {

// A line for each of quotes and day history whose first services fail, in Chinese: 行情：新浪 10:02
// 起没有应答，在用腾讯.
QStringList troubleLines(const Services& services, const ServiceWatch& watch, const QDateTime& now);

}  // namespace guanchao
