// Form11, "个股F10资料": the company profile page of a stock in a browser control; where there is
// none, in the system's browser. Table tempcanshu; the rules are in f10_page. It takes dangqiandm
// and dangqianjc over at its load.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "frame/environment.h"
#include "frame/windows.h"
#include "market/f10_page.h"
#include "market/page_browser.h"

namespace Ui {
class Form11;
}

namespace guanchao {

class Form11 : public QDialog {
    Q_OBJECT

public:
    Form11(Environment& environment, Windows& windows);
    ~Form11() override;

private:
    void Form_Load();
    void showPage();
    void pageFailed(PageFailure failure);
    void showWords(const QString& words);
    void openOutside();

    Environment& environment_;
    std::unique_ptr<Ui::Form11> ui_;
    F10Page page_;
    QPointer<QWidget> browser_;
    QTimer Timer1_;  // once, to unload a window without a page
};

}  // namespace guanchao
