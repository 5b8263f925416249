// FormRestore, "恢复": the copies of the stores in the folder 备份, and the question before stores
// of one are taken back, which whoever has opened the window then does. Those that can't be read
// can't be chosen. The rules are in kept_copies and store_check.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "exchange/restore.h"
#include "exchange/store_check.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"

class QCheckBox;

namespace Ui {
class FormRestore;
}

namespace guanchao {

class FormRestore : public QDialog {
    Q_OBJECT

public:
    FormRestore(Environment& environment, Windows& windows);
    ~FormRestore() override;

signals:
    // The user wants these stores in place of what is there.
    void agreed(const CopyChoice& choice);

private:
    QCoro::Task<> list(std::stop_token stop);
    QCoro::Task<> ask(std::stop_token stop);
    QCoro::Task<bool> isWhole(CopyChoice chosen, std::stop_token stop);
    void showCopies();
    void fillRow(int row, const KeptCopy& copy, const StoreContents& contents);
    void showMarked();
    void enableRestore();
    CopyChoice choice() const;
    QCheckBox* boxOf(CopiedStore store) const;

    Environment& environment_;
    std::unique_ptr<Ui::FormRestore> ui_;
    ResultGrid grid_;
    QString folder_;
    QList<KeptCopy> copies_;
    QList<StoreContents> contents_;  // of the copies, once they are read
    QList<CopiedStore> left_;        // boxes that the user has emptied
    Runs runs_;
};

}  // namespace guanchao
