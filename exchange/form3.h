// Form3, the window "导入主题": themes from a library that this program exported and from a text
// file, and the emptying of the theme table. Tables dzhzhuti, dmb and tempcanshu of the main store;
// the rules are in ThemeImport and TextImport.
#pragma once

#include <QDialog>
#include <QShortcut>
#include <memory>

#include "base/runs.h"
#include "exchange/exchange_run.h"
#include "exchange/text_import.h"
#include "exchange/theme_import.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "grid/result_grid.h"

class QLineEdit;
class QPushButton;

namespace Ui {
class Form3;
}

namespace guanchao {

class Form3 : public QDialog {
    Q_OBJECT

public:
    Form3(Environment& environment, Windows& windows);
    ~Form3() override;

signals:
    // The themes in the store may be others now.
    void imported();

private:
    void prepareControls();
    void connectControls();
    void Option_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();
    void Command8_Click();
    void Label11_Click();

    TextSource textSource() const;
    void pickInto(QLineEdit& field, const QString& title, const QString& file);
    void runImport(QPushButton& button, const Runs::Job& job);
    void showRun(const ShownExchange& run);

    Environment& environment_;
    std::unique_ptr<Ui::Form3> ui_;
    ResultGrid preview_;
    ExchangeRun run_;
    ThemeImport themeImport_;
    TextImport textImport_;
    QShortcut stopKey_{Qt::Key_Escape, this};  // closes the window while nothing runs
    QPushButton* runButton_ = nullptr;         // of the run under way
    std::unique_ptr<UndoLine> undoLine_;
    Runs runs_;
};

}  // namespace guanchao
