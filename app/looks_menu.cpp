#include "app/looks_menu.h"

#include <utility>

#include "frame/choice_menu.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

LooksMenu::LooksMenu(QMenu& menu, QString iniPath, ColourScheme* desktop)
    : iniPath_(std::move(iniPath)), desktop_(desktop), choice_(keptLooks(iniPath_)) {
    QMenu* entries = menu.addMenu(u"外观"_s);
    addChoices<ColourChoice>(*entries,
                             {{u"颜色跟随桌面"_s, ColourChoice::desktop},
                              {u"深色"_s, ColourChoice::dark},
                              {u"浅色"_s, ColourChoice::light}},
                             choice_.colours, [this](ColourChoice colours) {
                                 choose({colours, choice_.points});
                             });
    entries->addSeparator();
    addChoices<int>(*entries,
                    {{u"字号小"_s, standardPoints - 1},
                     {u"字号标准"_s, standardPoints},
                     {u"字号大"_s, standardPoints + 2},
                     {u"字号特大"_s, standardPoints + 4}},
                    choice_.points, [this](int points) {
                        choose({choice_.colours, points});
                    });
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

void LooksMenu::choose(const LooksChoice& choice) {
    choice_ = choice;
    keepLooks(iniPath_, choice_);
    apply();
}

void LooksMenu::apply() {
    std::optional<Sheet> desktop;
    if (desktop_ && desktop_->isDark()) {
        desktop = *desktop_->isDark() ? Sheet::dark : Sheet::light;
    }
    applyLooks(*qApp, choice_, desktop);
}

}  // namespace guanchao
