// The entries of the tools and the help menu that only tell something or open a page.
#pragma once

#include "platform/dialogs.h"
#include "platform/service.h"
#include "platform/shell.h"

namespace guanchao {

// 聚益通: the maker's site; says so if services.ini names none.
void openVendorSite(const Service& vendor, Dialogs& dialogs, Shell& shell);

// 关于: the maker.
void tellMaker(Dialogs& dialogs);

// 软件初始化: nothing has to be registered here, so it only tells its purpose.
void tellSetup(Dialogs& dialogs);

}  // namespace guanchao
