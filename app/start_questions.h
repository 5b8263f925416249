// What the program asks when it has started: whether the drafts of a run that broke off are opened,
// whether the websites of today take the place of those that an earlier program brought along and
// that answer no more, and whether the code table that a new folder has is filled from the web.
#pragma once

#include <QCoro/QCoroTask>
#include <stop_token>

#include "frame/environment.h"
#include "frame/windows.h"

namespace guanchao {

// One after the other. Raises OperationError if services.ini can't be written, and Cancelled.
QCoro::Task<> askAtTheStart(Environment& environment, Windows& windows, std::stop_token stop);

}  // namespace guanchao
