// The controls of a window that a screen reader can't name.
#pragma once

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>
#include <QStringList>
#include <algorithm>

namespace guanchao {

inline bool isNamed(const QWidget& control) {
    const bool showsWords =
        qobject_cast<const QAbstractButton*>(&control) || qobject_cast<const QLabel*>(&control);
    const QString words = showsWords ? control.property("text").toString() : QString();
    const QList<QLabel*> labels = control.window()->findChildren<QLabel*>();
    return !control.accessibleName().isEmpty() || !words.isEmpty() ||
           std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* label) { return label->buddy() == &control; });
}

// By object name and class.
inline QStringList unnamedControls(const QWidget& window) {
    QStringList unnamed;
    for (const QWidget* it : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool interactive =
            qobject_cast<const QAbstractButton*>(it) || (it->focusPolicy() & Qt::TabFocus);
        if (interactive && !isNamed(*it)) {
            unnamed << it->objectName() + u' ' + QString::fromLatin1(it->metaObject()->className());
        }
        // What these are made of is no control of its own.
        const bool whole =
            qobject_cast<const QMenuBar*>(it) || qobject_cast<const QComboBox*>(it) ||
            qobject_cast<const QAbstractSpinBox*>(it) ||
            (qobject_cast<const QAbstractScrollArea*>(it) && !qobject_cast<const QScrollArea*>(it));
        if (!whole && !it->isWindow()) {
            unnamed << unnamedControls(*it);
        }
    }
    return unnamed;
}

// Labels whose accessible name is told in place of their words.
inline QStringList silencedLabels(const QWidget& window) {
    QStringList silenced;
    for (const QLabel* it : window.findChildren<QLabel*>()) {
        const QString name = it->accessibleName();
        if (!name.isEmpty() && name != it->text() && it->textFormat() != Qt::RichText) {
            silenced << it->objectName();
        }
    }
    return silenced;
}

}  // namespace guanchao
