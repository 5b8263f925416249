// A window that asks its user before it closes, where closing would lose what is not saved.
#pragma once

#include <QDialog>

namespace guanchao {

class AskingWindow : public QDialog {
    Q_OBJECT

public:
    explicit AskingWindow(Qt::WindowFlags flags = {}) : QDialog(nullptr, flags) {}

signals:
    // Its user has answered that it is to stay.
    void stays();
};

}  // namespace guanchao
