// FormRestore, "恢复": the copies of the stores in the folder 备份, and the question before one is
// taken back, which whoever has opened the window then does. The rules are in KeptCopies and
// StoreCheck.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "base/runs.h"
#include "exchange/kept_copies.h"
#include "exchange/store_check.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"

namespace Ui {
class FormRestore;
}

namespace guanchao {

// How much is in stores; nothing where they can't be read.
using PossibleCounts = std::optional<StoreCounts>;

class FormRestore : public QDialog {
    Q_OBJECT

public:
    FormRestore(Environment& environment, Windows& windows);
    ~FormRestore() override;

signals:
    // The user wants the copy of this name in place of what is there.
    void agreed(const QString& copy);

private:
    QCoro::Task<> list(std::stop_token stop);
    QCoro::Task<> ask(std::stop_token stop);
    void showCopies(const QList<PossibleCounts>& counts);
    void fillRow(int row, const KeptCopy& copy, const PossibleCounts& counts);
    void enableRestore();

    Environment& environment_;
    std::unique_ptr<Ui::FormRestore> ui_;
    ResultGrid grid_;
    QString folder_;
    QList<KeptCopy> copies_;
    Runs runs_;
};

}  // namespace guanchao
