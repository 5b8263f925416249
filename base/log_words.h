// What of a text may be kept in the log and sent to others. The texts of the program quote what
// users have typed, name their files and the addresses that they have entered.
#pragma once

#include <QString>

namespace guanchao {

// In one line, without what stands in quotes but a menu or button of the program's, without
// addresses beyond scheme, host and port, without passwords, and of paths nothing but the names of
// the program's own files.
QString loggable(const QString& text);

// The same of a reason or a name, which ends where words of others may begin: at a colon, an equals
// sign, or at a word behind a blank that is no number and no file of the program.
QString headOf(const QString& text);

// Of an address; … for one that holds more than scheme, host and port before its path.
QString shownAddress(const QString& address);

// A file that the program itself makes or brings along.
bool isOwnFile(const QString& name);

}  // namespace guanchao
