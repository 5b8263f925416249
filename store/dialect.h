// What the statements need beyond the plain store library, registered on every connection before
// its first read: `like` with "*" beside "%", `iif`, and fast deterministic one-argument `date()`
// and `datetime()`, which may therefore stand in indexes; `avg` and `round`, of which each version
// of the library has its own idea in the last digits.
#pragma once

#include <string_view>

struct sqlite3;

namespace guanchao {

// Raises std::runtime_error if the library refuses a function.
void registerDialect(sqlite3* handle);

// What `date` gives of a time text that it takes as it stands, its first ten characters; empty for
// others.
std::string_view dayOfPlainTime(std::string_view text);

// What `round` gives in a statement: so many decimals, a half away from zero.
double roundedInStatements(double value, int decimals);

}  // namespace guanchao
