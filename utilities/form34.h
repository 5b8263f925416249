// Form34, "行情来源": the services of services.ini, how each has answered, and the user's choice of
// them, which holds from the next request on. The rules are in ServicesFile, ServiceWatch and
// CheckRun.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "utilities/service_table.h"

namespace Ui {
class Form34;
}

namespace guanchao {

class Form34 : public QDialog {
    Q_OBJECT

public:
    Form34(Environment& environment, Windows& windows);
    ~Form34() override;

protected:
    void keyPressEvent(QKeyEvent* press) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void connectControls();
    void readAnew();
    void fillRow(int row, const ServiceEntry& entry);
    void showCheck(int row);
    void showStates();
    void showMarked();
    void showDetails();
    const ServiceEntry* marked() const;
    void mark(const QString& section);

    void move(bool up);
    void switchUse();
    void keepTyped(const QString& host);
    void saveHost();
    QCoro::Task<> takeStandard(std::stop_token stop);

    QCoro::Task<> test(std::stop_token stop);
    void showTesting(bool testing);
    void say(const QString& words);
    void showBegun(const Check& check, const Service& service, const CheckStep& step);
    void showFound(const CheckRow& row);

    Environment& environment_;
    std::unique_ptr<Ui::Form34> ui_;
    ResultGrid grid_;
    QList<ServiceEntry> entries_;  // a row each
    CheckWords checkWords_;
    QHash<QString, QString> typedHosts_;  // that aren't saved yet, by service
    QTimer ages_;
    Runs questions_;
    Runs tests_;
};

}  // namespace guanchao
