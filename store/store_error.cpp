#include "store/store_error.h"

namespace guanchao {

StoreError::StoreError(const QString& reason, const QString& path, const QString& statement,
                       StoreFault fault, const QString& holder)
    : OperationError(reason), path_(path), statement_(statement), fault_(fault), holder_(holder) {}

}  // namespace guanchao
