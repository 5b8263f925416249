// A box with a chart picture, painted over its full size; without a picture it says so. The first
// picture is on its way.
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

    // A box without a picture says whether one is on its way.
    void setLoading(bool loading);

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
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QPixmap picture_;
    bool isLoading_ = true;
    bool isDown_ = false;  // the left button, since it was pressed here
};

}  // namespace guanchao
