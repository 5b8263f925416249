// The look of the whole program: one style sheet over Fusion, dark or light, the size of its font,
// and the pictures of its buttons. The user's choice is kept in 界面.ini of the application folder.
#pragma once

#include <QApplication>
#include <QIcon>
#include <optional>

#include "frame/sheets.h"

namespace guanchao {

enum class ColourChoice : std::uint8_t { desktop, dark, light };

inline constexpr int standardPoints = 10;

struct LooksChoice {
    ColourChoice colours = ColourChoice::desktop;
    int points = standardPoints;  // of the font
};

// The standard where none is kept, or one that can't be.
LooksChoice keptLooks(const QString& iniPath);
void keepLooks(const QString& iniPath, const LooksChoice& choice);

// Of windows that are open too. A desktop that tells nothing is taken for a dark one.
void applyLooks(QApplication& application, const LooksChoice& choice = {},
                std::optional<Sheet> desktop = std::nullopt);

// As it was applied last.
Sheet shownSheet();

QIcon programIcon();
QIcon searchIcon();
QIcon updateIcon();

}  // namespace guanchao
