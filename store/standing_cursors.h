// Which connections stand on a row of their store. Such a one keeps writers out: a second
// connection of its thread would wait behind a writer that waits for the first, and neither would
// go on.
#pragma once

struct sqlite3;

namespace guanchao {

// Of this thread, until it is forgotten. Asserts that no other connection of the thread stands on a
// row of the same file.
void noteConnection(sqlite3* connection);
void forgetConnection(sqlite3* connection);

}  // namespace guanchao
