// A box in which a text is typed or picked from a list: what is typed stays as typed, and a turn of
// the wheel changes nothing by accident.
#pragma once

#include <QComboBox>

namespace guanchao {

class EntryBox : public QComboBox {
    Q_OBJECT

public:
    explicit EntryBox(QWidget* parent = nullptr);

    // Exchanges the list and keeps the text; an empty list leaves the box as it is.
    void refill(const QStringList& list);
    void setText(const QString& text);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace guanchao
