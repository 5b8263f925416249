#include "app/looks_menu.h"

#include <QActionGroup>
#include <utility>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

LooksMenu::LooksMenu(QMenu& menu, QString iniPath, ColourScheme* desktop)
    : iniPath_(std::move(iniPath)), desktop_(desktop), choice_(keptLooks(iniPath_)) {
    QMenu* entries = menu.addMenu(u"外观"_s);
    addChoices<ColourChoice>(*entries,
                             {{u"颜色跟随桌面"_s, ColourChoice::desktop},
                              {u"深色"_s, ColourChoice::dark},
                              {u"浅色"_s, ColourChoice::light}},
                             &LooksChoice::colours);
    entries->addSeparator();
    addChoices<int>(*entries,
                    {{u"字号小"_s, standardPoints - 1},
                     {u"字号标准"_s, standardPoints},
                     {u"字号大"_s, standardPoints + 2},
                     {u"字号特大"_s, standardPoints + 4}},
                    &LooksChoice::points);
    if (desktop_) {
        desktop_->whenChanged([this] { apply(); });
    }
    apply();
}

LooksMenu::~LooksMenu() {
    if (desktop_) {
        desktop_->whenChanged({});
    }
}

template <typename Value>
void LooksMenu::addChoices(QMenu& menu, const QList<std::pair<QString, Value>>& choices,
                           Value LooksChoice::*chosen) {
    auto* group = new QActionGroup(&menu);
    for (const auto& [words, value] : choices) {
        QAction* entry = menu.addAction(words);
        entry->setCheckable(true);
        entry->setChecked(choice_.*chosen == value);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, chosen, value = value] {
            choice_.*chosen = value;
            keepLooks(iniPath_, choice_);
            apply();
        });
    }
}

void LooksMenu::apply() {
    std::optional<Sheet> desktop;
    if (desktop_ && desktop_->isDark()) {
        desktop = *desktop_->isDark() ? Sheet::dark : Sheet::light;
    }
    applyLooks(*qApp, choice_, desktop);
}

}  // namespace guanchao
