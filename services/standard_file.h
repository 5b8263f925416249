// The services.ini that the program brings along, and how an untouched one of earlier days is
// known.
#pragma once

#include <QByteArray>

namespace guanchao {

// Whether these are, byte for byte, the bytes of a services.ini that the program has brought along
// before: nobody has changed anything in it, and the one of today can take its place.
bool isFormerStandard(const QByteArray& bytes);

// The one of today.
QByteArray standardFile();

}  // namespace guanchao
