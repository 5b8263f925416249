// What makes a monitor fire: its value passes the threshold in the chosen direction.
#pragma once

#include <QString>

namespace guanchao {

// Both sides are strict: a value equal to the threshold is on neither side of it. A comparison sign
// other than ">" and "<" never fires.
bool crosses(const QString& bijiaofu, double baojinzhi, double oldValue, double newValue);

}  // namespace guanchao
