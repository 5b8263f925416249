#include "frame/entry_box.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "frame/short_texts.h"

namespace guanchao {

EntryBox::EntryBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMaxVisibleItems(20);
    setItemDelegate(new ShortTexts(this));
}

void EntryBox::refill(const QStringList& list) {
    if (list.isEmpty()) {
        return;
    }
    const QSignalBlocker quiet(this);
    const QString text = currentText();
    clear();
    addItems(list);
    setText(text);
}

void EntryBox::setText(const QString& text) {
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(text);
    lineEdit()->setCursorPosition(0);
}

void EntryBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace guanchao
