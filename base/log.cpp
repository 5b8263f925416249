#include "base/log.h"

#include <exception>
#include <mutex>

#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

std::mutex guardOfLog;
Log* current = nullptr;

}  // namespace

QString wordOf(LogKind kind) {
    switch (kind) {
        case LogKind::program:
            return u"程序"_s;
        case LogKind::failure:
            return u"失败"_s;
        case LogKind::service:
            return u"网站"_s;
        case LogKind::toolkit:
            return u"Qt"_s;
        case LogKind::run:
            break;
    }
    return u"运行"_s;
}

void setLog(Log* log) {
    const std::scoped_lock lock(guardOfLog);
    current = log;
}

void writeLog(const LogEntry& entry) noexcept {
    try {
        const std::scoped_lock lock(guardOfLog);
        if (current) {
            current->write(
                {entry.kind, loggable(entry.doing), loggable(entry.happened), entry.took});
        }
    } catch (const std::exception&) {
        return;
    }
}

}  // namespace guanchao
