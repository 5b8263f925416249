// Form6, the dialog "添加主题": adds stocks to one theme or rewrites it from a list of codes.
// Tables dzhzhuti, dmb and tempcanshu of the main store; the rules are in ThemeEditing. It shows
// the theme that is current at the opening and changes the shared values in nothing.
#pragma once

#include <QDialog>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "themes/theme_editing.h"

namespace Ui {
class Form6;
}

namespace guanchao {

class Form6 : public QDialog {
    Q_OBJECT

public:
    Form6(Environment& environment, Windows& windows);
    ~Form6() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load(const QString& theme);
    void Text1_Click();
    void Command1_Click();
    void Command2_Click();
    ThemeFields fields() const;

    std::unique_ptr<Ui::Form6> ui_;
    ThemeEditing editing_;
    Runs runs_;
};

}  // namespace guanchao
