// What a crash has left of unsaved articles, offered at the start of the program.
#pragma once

#include <QCoro/QCoroTask>
#include <stop_token>

#include "frame/windows.h"

namespace guanchao {

// Names the drafts and, if the user agrees, opens each as an unsaved article. Asks nothing where
// none is left; a refusal leaves them for the next start.
QCoro::Task<> offerDrafts(Environment& environment, Windows& windows, std::stop_token stop);

}  // namespace guanchao
