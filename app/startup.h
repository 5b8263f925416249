// The load of the main window in its order, without the window: the first values, the stores and
// the first refresh.
#pragma once

#include <QString>
#include <functional>

#include "base/globals.h"
#include "platform/clock.h"
#include "store/stores.h"
#include "utilities/tray_module.h"

namespace guanchao {

// Tray icon, flags, application folder, stores and keys, the end of a restore that was killed and
// of a commit over two stores, the day, then the first refresh. Raises whatever these raise; the
// values before it are set then.
void loadProgram(const QString& programFolder, TrayModule& tray, Globals& globals, Stores& stores,
                 const Clock& clock, const std::function<void()>& refresh);

}  // namespace guanchao
