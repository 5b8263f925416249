#include "research/line_choice.h"

#include <QPixmap>
#include <QSignalBlocker>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QIcon swatch(const QColor& colour) {
    QPixmap picture(12, 12);
    picture.fill(colour);
    return {picture};
}

}  // namespace

LineChoice::LineChoice(QWidget* parent) : QListWidget(parent) {
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        plot_->switchLine(row(item), item->checkState() == Qt::Checked);
    });
}

void LineChoice::showLines() {
    const QSignalBlocker quiet(this);
    clear();
    for (const HistoryPlot::Line& line : plot_->lines()) {
        const QString name = line.hasDays ? line.name : line.name + u"（没有行情）"_s;
        auto* item = new QListWidgetItem(swatch(line.colour), name, this);
        item->setFlags(line.hasDays
                           ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
                           : Qt::ItemIsSelectable);
        item->setCheckState(line.isOn ? Qt::Checked : Qt::Unchecked);
    }
    setCurrentRow(0);
}

}  // namespace guanchao
