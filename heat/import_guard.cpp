#include "heat/import_guard.h"

#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void requireNoNewsImport(const Globals& globals) {
    if (globals.newsImportRuns) {
        throw OperationError(u"正在导入新闻和商品，请等它结束后再试。"_s);
    }
}

}  // namespace guanchao
