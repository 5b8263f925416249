// How often gains fall into each range of percents, and the painter of that.
#pragma once

#include <QWidget>
#include <vector>

namespace guanchao {

// Ranges of 2 % from -20 to 20, before them what is below and behind them what is above. A gain on
// an edge belongs to the range that begins there.
inline constexpr int histogramStep = 2;
inline constexpr int histogramEnd = 20;

std::vector<int> histogramOf(const std::vector<double>& gains);

// "-20% 以下", "-2%～0%", "20% 以上".
QString rangeWords(size_t range);

// One histogram with its title; the range under the pointer, or the one that the arrow keys choose,
// tells its count, to assistive tools too.
class GainHistogram : public QWidget {
    Q_OBJECT

public:
    explicit GainHistogram(QString title, QWidget* parent = nullptr);

    void showGains(const std::vector<double>& gains);
    // The chosen range with its count, or how many gains there are.
    QString words() const;

    QSize sizeHint() const override { return {190, 130}; }
    QSize minimumSizeHint() const override { return {110, 90}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect bars() const;
    QRect barOf(size_t range) const;
    void choose(int range);

    QString title_;
    std::vector<int> counts_;
    int chosen_ = -1;
};

}  // namespace guanchao
