// Several jobs of which a failed one keeps no other from running: the first failure is raised once
// all have had their turn. Any other kind of failure goes through.
#pragma once

#include <exception>

namespace guanchao {

template <typename Failure>
class FirstFailure {
public:
    template <typename Job>
    void attempt(Job job) {
        try {
            job();
        } catch (const Failure&) {
            first_ = first_ ? first_ : std::current_exception();
        }
    }

    explicit operator bool() const { return first_ != nullptr; }

    void raise() const {
        if (first_) {
            std::rethrow_exception(first_);
        }
    }

private:
    std::exception_ptr first_;
};

}  // namespace guanchao
