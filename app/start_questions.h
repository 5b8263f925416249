// What the program asks when it has started: whether the drafts of a run that broke off are opened,
// whether the websites of today take the place of those that an earlier program brought along and
// that answer no more; and at a first start the page 开始使用, what to begin with. A first start is
// one whose services are on the web, whose code table is that which a new folder brings along, with
// no list of all stocks read so far, and whose page nobody has closed without a choice. So it comes
// neither in a folder for practice nor beside services of this computer.
#pragma once

#include <QCoro/QCoroTask>
#include <stop_token>

#include "frame/environment.h"
#include "frame/windows.h"

namespace guanchao {

// One after the other. Raises OperationError if services.ini can't be written, and Cancelled.
QCoro::Task<> askAtTheStart(Environment& environment, Windows& windows, std::stop_token stop);

}  // namespace guanchao
