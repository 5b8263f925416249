// Form38, "热力图": all themes as a map, and the stocks of one. Tables dzhzhuti and dmb; the rules
// are in theme_map, treemap and MapView. What is chosen in it is the current theme or stock, on
// which the entries of the main window's popups act.
#pragma once

#include <QDialog>
#include <QMenu>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "themes/theme_map.h"

namespace Ui {
class Form38;
}

namespace guanchao {

class Form38 : public QDialog {
    Q_OBJECT

public:
    Form38(Environment& environment, Windows& windows);
    ~Form38() override;

    // What the popups of the main window offer on a theme and on a stock; they outlive the window.
    void offer(const QList<QAction*>& onTheme, const QList<QAction*>& onStock);

    // The quotes or the themes are others now.
    void readAgain();

signals:
    // Chosen by its box, or by going into it.
    void themeChosen(const QString& theme);
    // Its entries can be switched to what fits now.
    void stockMenuOpens();

private:
    void connectControls();
    void addCommands();
    void begin(const QString& theme);
    QCoro::Task<> read(std::stop_token stop);
    void showBoxes(const QList<MapBox>& boxes);
    void showPlace(const QList<MapBox>& boxes);
    void showChosen();
    void takeChosen();
    void goBack();
    void openChart();
    void Map_Opened();
    void Map_MenuAsked(const QPoint& place);

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form38> ui_;
    QString theme_;   // whose stocks are shown; empty: all themes
    QString wanted_;  // whose are read
    QMenu themeMenu_;
    QMenu stockMenu_;
    QAction* chart_ = nullptr;
    Runs runs_;
};

}  // namespace guanchao
