// The keys of the enciphered stores. They are kept nowhere: each is built from its seed when the
// program starts.
#pragma once

#include <QString>

namespace guanchao {

inline const QString heatSeed = QStringLiteral("v3gcnq8xw2ht51kd");
inline const QString articleSeed = QStringLiteral("m7tz4bfy0pl19rc");

// 写种子: maps each character of the lower-cased seed through a table that is its own inverse over
// the letters and digits; any other character passes unchanged.
QString xiezhongzi(const QString& seed);

}  // namespace guanchao
