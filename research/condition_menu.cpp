#include "research/condition_menu.h"

#include <algorithm>

#include "base/values.h"
#include "research/refused_condition.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

ConditionMenu::ConditionMenu(QPlainTextEdit& box, KeptConditions& kept, Dialogs& dialogs,
                             Failures& failures, QWidget* parent)
    : QMenu(parent),
      box_(box),
      stored_(box.toPlainText()),
      kept_(kept),
      dialogs_(dialogs),
      runs_(failures) {
    connect(this, &QMenu::aboutToShow, this, &ConditionMenu::fill);
}

void ConditionMenu::fill() {
    const QList<NamedCondition> named = kept_.named();
    clear();
    qDeleteAll(findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    addConditions(named);
    addSeparator();
    addConditions(offeredConditions());
    addConditions({{u"窗口自带的原文（有一处换行断开了词）"_s, stored_}});
    addSeparator();
    connect(addAction(u"存为常用条件…"_s), &QAction::triggered, this,
            [this] { runs_.start([this](std::stop_token stop) { return keep(stop); }); });
    QMenu* removal = addMenu(u"删除常用条件"_s);
    removal->setEnabled(!named.isEmpty());
    for (const NamedCondition& it : named) {
        connect(removal->addAction(shortened(it.name, longestShownName)), &QAction::triggered, this,
                [this, name = it.name] { kept_.remove(name); });
    }
    QMenu* columns = addMenu(u"插入列名"_s);
    for (const QString& name : conditionColumns()) {
        connect(columns->addAction(name), &QAction::triggered, this,
                [this, name] { putColumn(name); });
    }
}

void ConditionMenu::addConditions(const QList<NamedCondition>& conditions) {
    for (const NamedCondition& it : conditions) {
        QAction* entry = addAction(shortened(it.name, longestShownName).replace(u'&', u"&&"_s));
        entry->setToolTip(it.text);
        connect(entry, &QAction::triggered, this, [this, text = it.text] {
            box_.selectAll();  // so that the box's own undo brings back what stood there
            box_.insertPlainText(text);
            box_.setFocus();
        });
    }
}

// By another text under its name.
bool ConditionMenu::isTaken(const NamedCondition& condition) const {
    const QList<NamedCondition> named = kept_.named();
    return std::ranges::any_of(named, [&](const NamedCondition& it) {
        return it.name == condition.name && it != condition;
    });
}

QCoro::Task<> ConditionMenu::keep(std::stop_token stop) {
    const QString text = box_.toPlainText();
    const QString name =
        co_await dialogs_.input(stop, u"请输入条件的名称"_s, u"存为常用条件"_s, QString());
    const NamedCondition condition = {trimBlanks(name), text};
    if (condition.name.isEmpty()) {
        co_return;
    }
    bool keeps = true;
    if (isTaken(condition)) {
        const QString question = u"已有常用条件“%1”，换成现在的条件吗？"_s.arg(condition.name);
        keeps = co_await dialogs_.ask(stop, question);
    }
    if (keeps) {
        kept_.keep(condition);
    }
}

void ConditionMenu::putColumn(const QString& name) {
    box_.insertPlainText(u' ' + name);
    box_.setFocus();
}

}  // namespace guanchao
