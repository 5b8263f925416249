#include "base/activity.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

thread_local const Activity* innermost = nullptr;

}  // namespace

Activity::Activity(const QString& name, const QString& remains)
    : outer_(innermost), name_(name), remains_(remains) {
    innermost = this;
}

Activity::~Activity() {
    Q_ASSERT_X(innermost == this, "Activity", "stands across an await");
    innermost = outer_;
}

void Activity::wrote(const QString& part) {
    written_ << part;
    remains_ = u"已经写入并保留："_s + written_.join(u'、') + u"。其余没有写入。"_s;
}

QString Activity::currentName() {
    return innermost ? innermost->name_ : QString();
}

QString Activity::currentRemains() {
    if (!innermost) {
        return {};
    }
    QString remains = innermost->remains_;
    for (const Activity* it = innermost->outer_; it; it = it->outer_) {
        if (!it->written_.isEmpty()) {
            remains += u"\n已经写入并保留："_s + it->written_.join(u'、') + u"。"_s;
        }
    }
    return remains;
}

OperationError::OperationError(const QString& reason, const QString& forLog)
    : std::runtime_error(reason.toStdString()),
      reason_(reason),
      forLog_(forLog),
      activity_(Activity::currentName()),
      remains_(Activity::currentRemains()) {}

}  // namespace guanchao
