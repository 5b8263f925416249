#include "base/runs.h"

#include <memory>

#include "base/later.h"
#include "tests/support/fakes.h"

namespace guanchao {

class RunsTest : public ::testing::Test {
protected:
    // A run that waits twice and notes how far it came, and what it left.
    QCoro::Task<> steps(std::stop_token stop) {
        const auto end = std::shared_ptr<void>(nullptr, [this](void*) { notes_ << u"left"_s; });
        notes_ << u"begun"_s;
        const QString first = co_await first_.orStop(stop);
        notes_ << first;
        const QString second = co_await second_.orStop(stop);
        notes_ << second;
    }

    QStringList notes_;
    Later<QString> first_, second_;
    FakeFailures failures_;
    std::unique_ptr<Runs> runs_ = std::make_unique<Runs>(failures_);
};

TEST_F(RunsTest, GoesOnWithEachValueAtOnce) {
    const auto start = [this] {
        runs_->start([this](std::stop_token stop) { return steps(stop); });
        return runs_->running();
    };
    EXPECT_TRUE(start());
    EXPECT_EQ(notes_, QStringList{u"begun"_s});
    first_.deliver(u"one"_s);
    first_.deliver(u"other"_s);
    second_.deliver(u"two"_s);
    EXPECT_EQ(notes_, (QStringList{u"begun"_s, u"one"_s, u"two"_s, u"left"_s}));
    EXPECT_FALSE(runs_->running());
    EXPECT_FALSE(start()) << "what is there already isn't waited for";
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
    EXPECT_TRUE(failures_.texts.isEmpty()) << "a stop is no failure";
}

}  // namespace guanchao
