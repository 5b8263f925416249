// 设置密码: takes the old key away from a theme store of an earlier version.
#pragma once

#include "platform/dialogs.h"

namespace guanchao {

// A file without a key is told to have none. Raises StoreError if the file is missing or has
// another key; it then stays as it was.
void clearMaintenanceKey(Dialogs& dialogs);

}  // namespace guanchao
