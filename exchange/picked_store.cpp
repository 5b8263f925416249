#include "exchange/picked_store.h"

#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Empty for what is no matter of the file itself: that it is missing, or held by another program.
QString matterOf(StoreFault fault, const QString& kind) {
    switch (fault) {
        case StoreFault::damaged:
            return u" 已损坏"_s;
        case StoreFault::notADatabase:
            return u" 不是"_s + kind + u"，或者密码不对"_s;
        case StoreFault::other:
            return u" 不是"_s + kind;
        default:
            return {};
    }
}

}  // namespace

int PickedStore::read(const std::function<int()>& use) const {
    try {
        return use();
    } catch (const StoreError& failure) {
        const QString matter = failure.path() == path ? matterOf(failure.fault(), kind) : QString();
        if (matter.isEmpty()) {
            throw;
        }
        throw OperationError(u"文件 "_s + path + matter + u"，请选择“导出数据”写的另一个"_s + kind +
                             u"（"_s + exportName + u"）。"_s);
    }
}

}  // namespace guanchao
