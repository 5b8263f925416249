// Store files that take a place, written beside it until they are whole. Failures raise StoreError
// or OperationError and leave what was there. Journals that killed runs have left go: they would be
// played back into the new store.
#pragma once

#include <QString>
#include <functional>

namespace guanchao {

// Leaves a whole store at the path that it is given, where no file is.
using WriteStore = std::function<void(const QString& path)>;

// Over the older one, if there is one.
void replaceStore(const QString& target, const WriteStore& write);

// Only where no file is.
void makeStore(const QString& target, const WriteStore& write);

// For who puts a store in its place by other means.
void removeJournalOf(const QString& path);

}  // namespace guanchao
