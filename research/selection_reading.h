// The rows of a search of Form12, read and coloured in a worker: the thread that shows only puts
// the table into its grid.
#pragma once

#include <memory>

#include "base/worker.h"
#include "grid/result_grid.h"
#include "research/selection_query.h"
#include "research/selection_score.h"
#include "store/stores.h"

namespace guanchao {

inline constexpr int selectionCodeColumn = 1;
inline constexpr int selectionDateColumn = 3;
inline constexpr int selectionThemeColumn = 4;

using FoundTable = std::shared_ptr<ResultGrid>;

struct FoundSelection {
    FoundTable table;
    SelectionScore score;
};

// Tells the first rows, a screen of them, as soon as they are found. `written` is what the
// operation that searches anew has written and a failure leaves. A condition that the store refuses
// raises RefusedCondition.
FoundSelection readSelection(const StoreFile& main, const SelectionQuery& query,
                             const QString& written, Work<FoundTable>& work);

}  // namespace guanchao
