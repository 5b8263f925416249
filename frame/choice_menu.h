// Entries of a menu of which one is chosen.
#pragma once

#include <QActionGroup>
#include <QList>
#include <QMenu>
#include <utility>

namespace guanchao {

// `choose` hears of the user's choices; the entries end with the menu.
template <typename Value, typename Choose>
void addChoices(QMenu& menu, const QList<std::pair<QString, Value>>& choices, const Value& chosen,
                const Choose& choose) {
    auto* group = new QActionGroup(&menu);
    for (const auto& [words, value] : choices) {
        QAction* entry = menu.addAction(words);
        entry->setCheckable(true);
        entry->setChecked(value == chosen);
        group->addAction(entry);
        QObject::connect(entry, &QAction::triggered, &menu,
                         [choose, value = value] { choose(value); });
    }
}

}  // namespace guanchao
