#include "app/service_line.h"

#include <chrono>
#include <utility>

#include "frame/practice_band.h"
#include "services/service_trouble.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds betweenLooks(1);

}  // namespace

ServiceLine::ServiceLine(QLabel& band, QPushButton& line, Environment& environment,
                         std::function<void()> open)
    : band_(band), line_(line), environment_(environment), looks_(this) {
    QSizePolicy policy = line_.sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // what lies below stays where it is
    line_.setSizePolicy(policy);
    line_.hide();
    connect(&line_, &QPushButton::clicked, this, std::move(open));
    looks_.setObjectName(u"serviceLooks"_s);
    connect(&looks_, &QTimer::timeout, this, &ServiceLine::look);
    looks_.start(betweenLooks);
}

void ServiceLine::look() {
    if (!line_.window()->isVisible()) {
        return;
    }
    showPractice(band_, environment_.services);
    const QStringList lines =
        troubleLines(environment_.services, environment_.watch, environment_.clock.now());
    const QString words = lines.value(0);
    if (words != line_.text()) {
        line_.setText(words);
        line_.setAccessibleName(words);
        line_.setVisible(!words.isEmpty());
    }
    line_.setToolTip(lines.join(u'\n') + u"\n按这里打开“行情来源”"_s);
}

}  // namespace guanchao
