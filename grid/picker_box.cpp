#include "grid/picker_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>

#include "base/values.h"
#include "frame/short_texts.h"
#include "grid/stock_picker.h"
#include "grid/twips.h"
#include "services/delisted.h"
#include "store/patience.h"

namespace guanchao {

PickerBox::PickerBox(QLineEdit& box, QListWidget& list, const StoreFile& mainStore, QObject* parent)
    : QObject(parent), box_(box), list_(list), mainStore_(mainStore) {
    list_.setUniformItemSizes(true);
    list_.setItemDelegate(new ShortTexts(&list_));
    list_.hide();
    box_.installEventFilter(this);
    list_.installEventFilter(this);
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &PickerBox::boxChanged);
    connect(&box_, &QLineEdit::textChanged, this, &PickerBox::boxChanged);
    connect(&list_, &QListWidget::itemClicked, this, &PickerBox::listClicked);
}

void PickerBox::hideList() {
    retry_.stop();
    const bool keysAreThere = list_.hasFocus();
    list_.hide();
    if (keysAreThere) {
        box_.setFocus();
    }
}

void PickerBox::takeFirst() {
    if (list_.count() > 0) {
        box_.setText(codeOfCandidate(list_.item(0)->text()));
    }
    hideList();
}

void PickerBox::setText(const QString& text) {
    const bool same = box_.text() == text;
    box_.setText(text);
    if (same) {
        boxChanged();
    }
}

void PickerBox::putText(const QString& text) {
    const QSignalBlocker quietly(box_);
    box_.setText(text);
    hideList();
}

void PickerBox::boxChanged() {
    retry_.stop();
    const QString text = trimBlanks(box_.text());
    if (text.isEmpty()) {
        return;
    }
    const auto find = [&] { return chazhaodaima(mainStore_, text); };
    const std::optional<QString> candidates = tryStep(find, false);
    list_.hide();
    list_.clear();
    if (!candidates) {
        retry_.start(betweenTries);
    } else if (!candidates->isEmpty()) {
        showCandidates(*candidates);
    }
}

void PickerBox::showCandidates(const QString& candidates) {
    list_.addItems(candidateLines(candidates).mid(0, mostLines_));
    placeList(candidates);
    list_.show();
    list_.raise();
}

// Directly under the box or above it, as wide as a code and a name need.
void PickerBox::placeList(const QString& candidates) {
    const int height = pixelsOf(candidateListHeight(candidates), list_);
    const int edge = wholeLinesAbove_ ? -height : box_.height();
    const QPoint place = box_.mapTo(list_.parentWidget(), QPoint(0, edge));
    QString widest = QStringLiteral("SH600000  四个汉字字");
    if (candidates.contains(delistedWord)) {
        widest += QStringLiteral("  ") + delistedWord;
    }
    const int text = list_.fontMetrics().horizontalAdvance(widest);
    const int width = text + list_.verticalScrollBar()->sizeHint().width() + 12;
    list_.setGeometry(place.x(), place.y(), std::max(width, box_.width()), height);
}

void PickerBox::listClicked() {
    const QListWidgetItem* item = list_.currentItem();
    if (!item) {
        return;
    }
    const QString line = item->text();
    box_.setText(wholeLinesAbove_ ? stockOfCandidate(line) : codeOfCandidate(line));
    list_.clear();
    hideList();
    emit chosen();
}

bool PickerBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &list_ && (event->type() == QEvent::Show || event->type() == QEvent::Hide)) {
        listShown(event->type() == QEvent::Show);
    }
    if (!isOpen_) {
        return QObject::eventFilter(watched, event);
    }
    if (leaves(watched, *event)) {
        hideList();
    }
    const bool ownKey =
        event->type() == QEvent::KeyPress && (watched == &box_ || watched == &list_);
    return (ownKey && isOpen_ && takeKey(watched, static_cast<QKeyEvent*>(event)->key())) ||
           QObject::eventFilter(watched, event);
}

void PickerBox::listShown(bool shown) {
    isOpen_ = shown;
    if (shown) {
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
    }
}

bool PickerBox::leaves(const QObject* watched, const QEvent& event) const {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (event.type() == QEvent::MouseButtonPress) {
        return widget && widget != &box_ && widget != &list_ && !list_.isAncestorOf(widget);
    }
    if (event.type() == QEvent::WindowDeactivate) {
        return widget == list_.window();
    }
    const bool goes = event.type() == QEvent::FocusOut && widget == &box_;
    const Qt::FocusReason reason =
        goes ? static_cast<const QFocusEvent&>(event).reason() : Qt::OtherFocusReason;
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

// Down goes from the box into the open list, Enter takes a line, Esc closes the list.
bool PickerBox::takeKey(const QObject* watched, int key) {
    if (key == Qt::Key_Escape) {
        hideList();
        box_.setFocus();
        return true;
    }
    if (watched == &box_ && key == Qt::Key_Down) {
        list_.setFocus();
        list_.setCurrentRow(0);
        return true;
    }
    if (watched == &list_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        box_.setFocus();
        listClicked();
        return true;
    }
    return false;
}

}  // namespace guanchao
