// What the desktop offers to the main window alone.
#pragma once

#include "platform/colour_scheme.h"
#include "platform/notifier.h"
#include "platform/sound.h"
#include "utilities/shell_link.h"
#include "utilities/tray_module.h"

namespace guanchao {

struct Desktop {
    TrayModule& tray;
    Sound& sound;
    Notifier& notifier;
    LauncherFolders launcherFolders;
    ColourScheme* colours = nullptr;  // of a desktop that has one
};

}  // namespace guanchao
