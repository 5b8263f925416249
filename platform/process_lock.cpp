#include "platform/process_lock.h"

#include <sys/file.h>

#include <cerrno>

namespace guanchao {

ProcessLock::Outcome ProcessLock::take() {
    if (!file_.isOpen() && !file_.open(QIODevice::ReadWrite)) {
        return Outcome::notWritable;
    }
    if (flock(file_.handle(), LOCK_EX | LOCK_NB) == 0) {
        return Outcome::taken;
    }
    return errno == EWOULDBLOCK ? Outcome::held : Outcome::notWritable;
}

}  // namespace guanchao
