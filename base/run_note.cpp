#include "base/run_note.h"

#include <utility>

#include "base/log.h"
#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

RunNote::RunNote(const QString& name, std::stop_token stop)
    : name_(headOf(name)), stop_(std::move(stop)) {
    since_.start();
    writeLog({LogKind::run, name_, u"开始"_s});
}

RunNote::~RunNote() {
    if (outcome_.isEmpty()) {
        outcome_ = stop_.stop_requested() ? u"停止"_s : u"没有完成"_s;
    }
    writeLog({LogKind::run, name_, outcome_, std::chrono::milliseconds(since_.elapsed())});
}

void RunNote::failed(const QString& reason) {
    writeLog({LogKind::failure, name_, headOf(reason)});
}

void RunNote::ended(const QString& counts, bool byUser) {
    outcome_ = byUser ? u"停止"_s : u"结束"_s;
    if (!counts.isEmpty()) {
        outcome_ += u"："_s + counts;
    }
}

}  // namespace guanchao
