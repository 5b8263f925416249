// What the colours of a heat map mean: a strip of them, with the words of its ends.
#pragma once

#include <QWidget>

namespace guanchao {

class HeatLegend : public QWidget {
    Q_OBJECT

public:
    explicit HeatLegend(QWidget* parent = nullptr);

    // From the full green, or without falls from white, to the full red.
    void setScale(bool hasFalls, const QString& least, const QString& most);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool hasFalls_ = true;
    QString least_;
    QString most_;
};

}  // namespace guanchao
