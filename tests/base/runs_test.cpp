#include "base/runs.h"

#include <QStringList>
#include <memory>
#include <stdexcept>

#include "base/later.h"
#include "tests/support/fakes.h"

namespace guanchao {

class RunsTest : public ::testing::Test {
protected:
    // A run that waits twice and notes how far it came, and what it left.
    void startSteps() {
        runs_->start([this](std::stop_token stop) { return steps(stop); });
    }
    QCoro::Task<> steps(std::stop_token stop) {
        const auto end = std::shared_ptr<void>(nullptr, [this](void*) { notes_ << u"left"_s; });
        notes_ << u"begun"_s;
        const QString first = co_await innerStep(stop);
        notes_ << first;
        const QString second = co_await second_.orStop(stop);
        notes_ << second;
    }
    QCoro::Task<QString> innerStep(std::stop_token stop) {
        const QString value = co_await first_.orStop(stop);
        co_return value + u'!';
    }

    QStringList notes_;
    Later<QString> first_, second_;
    FakeFailures failures_;
    std::unique_ptr<Runs> runs_ = std::make_unique<Runs>(failures_);
};

TEST_F(RunsTest, GoesOnWithEachValueAtOnce) {
    startSteps();
    EXPECT_TRUE(runs_->running());
    EXPECT_EQ(notes_, QStringList{u"begun"_s});
    first_.deliver(u"one"_s);
    first_.deliver(u"other"_s);
    second_.deliver(u"two"_s);
    EXPECT_EQ(notes_, (QStringList{u"begun"_s, u"one!"_s, u"two"_s, u"left"_s}));
    EXPECT_FALSE(runs_->running());
    startSteps();
    EXPECT_FALSE(runs_->running()) << "what is there already isn't waited for";
}

TEST_F(RunsTest, AStopEndsItWhereverItWaits) {
    for (const int step : {1, 2}) {
        SCOPED_TRACE(step);
        notes_.clear();
        startSteps();
        if (step == 2) {
            first_.deliver(u"one"_s);
        }
        runs_->stop();
        EXPECT_FALSE(runs_->running());
        EXPECT_EQ(notes_.last(), u"left"_s);
        second_.deliver(u"too late"_s);
        EXPECT_EQ(notes_.last(), u"left"_s);
        EXPECT_TRUE(failures_.texts.isEmpty()) << "a stop is no failure";
    }
}

TEST_F(RunsTest, NoneOutlivesItsOwner) {
    startSteps();
    runs_.reset();
    EXPECT_EQ(notes_.last(), u"left"_s);
    first_.deliver(u"one"_s);
    EXPECT_EQ(notes_.last(), u"left"_s);
}

TEST_F(RunsTest, ARunMayEndItsOwner) {
    runs_->start([this](std::stop_token stop) -> QCoro::Task<> {
        co_await first_.orStop(stop);
        runs_.reset();
        notes_ << u"to the next await"_s;
        co_await second_.orStop(stop);
        notes_ << u"and no further"_s;
    });
    first_.deliver({});
    EXPECT_EQ(notes_, QStringList{u"to the next await"_s});
}

TEST_F(RunsTest, AFailureIsReportedAndHurtsNoOther) {
    startSteps();
    runs_->start([this](std::stop_token stop) -> QCoro::Task<> {
        co_await second_.orStop(stop);
        throw std::runtime_error("after a wait");
    });
    runs_->start([](std::stop_token) -> QCoro::Task<> {
        throw std::runtime_error("at once");
        co_return;
    });
    EXPECT_EQ(failures_.texts, QStringList{u"at once"_s});
    EXPECT_TRUE(runs_->running());
    second_.deliver({});
    EXPECT_EQ(failures_.texts, (QStringList{u"at once"_s, u"after a wait"_s}));
}

}  // namespace guanchao
