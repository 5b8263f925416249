// A box with a chart picture, painted over its full size; without a picture it says so.
#pragma once

#include <QFrame>
#include <QPixmap>
#include <optional>

namespace guanchao {

class ChartBox : public QFrame {
    Q_OBJECT

public:
    explicit ChartBox(QWidget* parent = nullptr);

    // The bytes as the service sent them; nothing, or what is no picture, leaves the box empty.
    void showPicture(const std::optional<QByteArray>& bytes);

    QSize sizeHint() const override { return minimumSize(); }

signals:
    void pressed(Qt::MouseButton button, const QPoint& place);
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent*) override {}  // the first click has opened the page
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPixmap picture_;
    QString words_;
    bool isDown_ = false;  // the left button, since it was pressed here
};

}  // namespace guanchao
