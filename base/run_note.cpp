#include "base/run_note.h"

#include <utility>

#include "base/log.h"
#include "base/log_words.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString stopped = u"停止"_s;
const QString unfinished = u"没有完成"_s;

}  // namespace

RunNote::RunNote(const QString& name, std::stop_token stop)
    : name_(headOf(name)), stop_(std::move(stop)) {
    since_.start();
    writeLog({LogKind::run, name_, u"开始"_s});
}

RunNote::~RunNote() {
    if (outcome_.isEmpty()) {
        outcome_ = stop_.stop_requested() ? stopped : unfinished;
    }
    writeLog({LogKind::run, name_, outcome_, std::chrono::milliseconds(since_.elapsed())});
}

void RunNote::failed(const QString& reason, const QString& counts) {
    writeLog({LogKind::failure, name_, headOf(reason)});
    end(unfinished, counts);
}

void RunNote::ended(const QString& counts, bool byUser) {
    end(byUser ? stopped : u"结束"_s, counts);
}

void RunNote::end(const QString& word, const QString& counts) {
    outcome_ = counts.isEmpty() ? word : word + u'：' + counts;
}

}  // namespace guanchao
