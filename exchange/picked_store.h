// A store file that the user has picked for an import: what fails on it is its own matter, and
// another file is to be picked.
#pragma once

#include <QString>
#include <functional>

namespace guanchao {

struct PickedStore {
    QString path;
    QString kind;        // what it should be: 文章库
    QString exportName;  // the name under which 导出数据 writes one

    // Runs `use`. A failure on the picked file, that it is damaged or of another kind, becomes an
    // OperationError that says so; others pass.
    int read(const std::function<int()>& use) const;
};

}  // namespace guanchao
