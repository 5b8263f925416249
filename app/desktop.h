// What the desktop offers to the main window alone.
#pragma once

#include "platform/sound.h"
#include "utilities/shell_link.h"
#include "utilities/tray_module.h"

namespace guanchao {

struct Desktop {
    TrayModule& tray;
    Sound& sound;
    LauncherFolders launcherFolders;
};

}  // namespace guanchao
