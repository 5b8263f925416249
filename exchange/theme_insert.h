// What an import writes to dzhzhuti, the table of themes (主题): only rows that are missing. Raises
// StoreError.
#pragma once

#include "store/connection.h"

namespace guanchao {

// Adds the stock to the theme with the relevance and attention of new rows, unless the pair is
// there: false then. `jc` is its short name, `date` the time of the import.
bool addMembership(Connection& store, const QString& name, const QString& dm, const QString& jc,
                   const QString& date);

// When the themes were last imported, for the label of the main window.
void stampThemes(Connection& store, const QString& date);

}  // namespace guanchao
