// Keeps the writers of the heat store from waiting for this program's own lock.
#pragma once

#include "app/globals.h"

namespace guanchao {

// For every write of this room, inside its Activity: raises OperationError while 导入新闻和商品
// holds the store, which the application tells in one box.
void requireNoNewsImport(const Globals& globals);

}  // namespace guanchao
