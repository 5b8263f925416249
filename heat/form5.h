// Form5, "商品编辑": adds, changes and deletes a commodity of the collector's list. Tables shopname
// and shophq of the heat store; the rules are in CommodityEditor. Its load takes dangqianshangpin
// over and empties it.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "heat/commodity_editor.h"

namespace Ui {
class Form5;
}

namespace guanchao {

class Form5 : public QDialog {
    Q_OBJECT

public:
    Form5(Environment& environment, Windows& windows);
    ~Form5() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void Form_Load();
    void showWhetherCollected();
    Commodity typed() const;
    void showCommodity(const Commodity& commodity);

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();

    std::unique_ptr<Ui::Form5> ui_;
    CommodityEditor editor_;
    std::unique_ptr<UndoLine> undoLine_;
    Runs runs_;
};

}  // namespace guanchao
