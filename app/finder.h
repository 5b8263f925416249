// 快速查找 (Ctrl+K), from every window: what is typed finds stocks, themes and commands by letters;
// Enter opens what is chosen. Reads dmb and dzhzhuti of the main store each time it opens.
#pragma once

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <functional>

#include "app/find_items.h"
#include "base/runs.h"
#include "frame/environment.h"

namespace guanchao {

class Finder : public QDialog {
    Q_OBJECT

public:
    struct Choices {
        std::function<void(const QString& dm, const QString& jc)> stock;
        std::function<void(const QString& name)> theme;
        std::function<void(const QString& theme)> page;
    };

    struct Command {
        QString words;
        QAction* action = nullptr;
    };

    // The actions outlive the window.
    Finder(Environment& environment, QList<Command> commands, Choices choices, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QCoro::Task<> read(std::stop_token stop);
    QList<FindItem> commandItems() const;
    void showFound();
    void choose(const QListWidgetItem* line);

    Environment& environment_;
    QList<Command> commands_;
    Choices choices_;
    QList<FindItem> items_;
    QList<FindItem> found_;
    QLineEdit* typed_;
    QListWidget* list_;
    bool isRead_ = false;
    Runs runs_;
};

// The entries of the menus; those of a submenu as 外观 / 浅色.
QList<Finder::Command> commandsOf(const QMenuBar& bar);

}  // namespace guanchao
