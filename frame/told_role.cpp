#include "frame/told_role.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <utility>

namespace guanchao {

namespace {

// What a control is told as; it is its child.
class ToldRole : public QObject {
public:
    ToldRole(QWidget& control, QAccessible::Role role, std::function<void()> press)
        : QObject(&control), role_(role), press_(std::move(press)) {}

    QAccessible::Role role() const { return role_; }
    bool canBePressed() const { return static_cast<bool>(press_); }
    void press() const { press_(); }

private:
    QAccessible::Role role_;
    std::function<void()> press_;
};

class ToldControl : public QAccessibleWidget {
public:
    ToldControl(QWidget& control, const ToldRole& told)
        : QAccessibleWidget(&control, told.role()), told_(told) {}

    // The words of a label are its name, and its value too: a line that tells a result.
    QString text(QAccessible::Text kind) const override {
        const auto* label = qobject_cast<const QLabel*>(widget());
        const bool isName = kind == QAccessible::Name && widget()->accessibleName().isEmpty();
        return label && (isName || kind == QAccessible::Value) ? label->text()
                                                               : QAccessibleWidget::text(kind);
    }

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (canBePressed()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() && canBePressed()) {
            told_.press();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    bool canBePressed() const {
        return told_.canBePressed() && widget()->isEnabled() &&
               widget()->focusPolicy() != Qt::NoFocus;
    }

    const ToldRole& told_;
};

QAccessibleInterface* toldControl(const QString&, QObject* object) {
    auto* control = qobject_cast<QWidget*>(object);
    if (!control) {
        return nullptr;
    }
    for (const QObject* it : control->children()) {
        if (const auto* told = dynamic_cast<const ToldRole*>(it)) {
            return new ToldControl(*control, *told);
        }
    }
    return nullptr;
}

// As it may have been told by its own class already.
void forgetRoleOf(QWidget& control) {
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&control);
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(told));
}

}  // namespace

void tellRole(QWidget& control, QAccessible::Role role, std::function<void()> press) {
    QAccessible::installFactory(toldControl);  // once, however often
    forgetRoleOf(control);
    new ToldRole(control, role, std::move(press));
}

void tellNamesOfBoxes(const QWidget& window) {
    for (QComboBox* box : window.findChildren<QComboBox*>()) {
        if (box->accessibleDescription().isEmpty()) {
            const QString tip = box->toolTip();
            box->setAccessibleDescription(box->accessibleName() +
                                          (tip.isEmpty() ? QString() : u'\n' + tip));
        }
    }
}

}  // namespace guanchao
