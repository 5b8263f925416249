#include "research/number_column.h"

#include <cmath>
#include <limits>
#include <optional>

namespace guanchao {

namespace {

constexpr std::int32_t none = std::numeric_limits<std::int32_t>::min();

// Nothing for a number that 32 bits don't hold to the letter, the zero below zero among them.
std::optional<std::int32_t> wholeOf(double number) {
    if (std::isnan(number)) {
        return none;
    }
    if (!(std::abs(number) <= std::numeric_limits<std::int32_t>::max()) ||
        std::trunc(number) != number || (number == 0 && std::signbit(number))) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(number);
}

double numberOf(std::int32_t whole) {
    return whole == none ? std::numeric_limits<double>::quiet_NaN() : whole;
}

}  // namespace

void NumberColumn::append(double number) {
    const std::optional<std::int32_t> whole = wholeOf(number);
    if (exact_.empty() && whole) {
        whole_.push_back(*whole);
        return;
    }
    if (!whole_.empty()) {
        exact_.reserve(whole_.capacity());
        for (const std::int32_t former : whole_) {
            exact_.push_back(numberOf(former));
        }
        whole_ = {};
    }
    exact_.push_back(number);
}

double NumberColumn::operator[](size_t at) const {
    return exact_.empty() ? numberOf(whole_[at]) : exact_[at];
}

size_t NumberColumn::bytes() const {
    return whole_.capacity() * sizeof(std::int32_t) + exact_.capacity() * sizeof(double);
}

}  // namespace guanchao
