// The one place where texts of the web and of exchange files, which come in GBK, become Unicode
// and back. GB18030, a superset, is what is really read: a broken byte then shows as U+FFFD.
#pragma once

#include <QByteArray>
#include <QString>

namespace guanchao {

// Raise std::runtime_error if this build of Qt lacks the conversion.
QString textFromGbk(const QByteArray& bytes);
QByteArray gbkFromText(const QString& text);

// The character's code in code page 936, of two bytes from 0x8140 on; that of "?" where it has
// none.
quint16 codeInGbk(QChar character);

}  // namespace guanchao
