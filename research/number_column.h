// Numbers in a row, kept small: whole numbers of 32 bits, which prices in hundredths of a yuan and
// nearly all volumes are, take 4 bytes each. One other number makes it 8 bytes for all of them.
// What is not there is NaN.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace guanchao {

class NumberColumn {
public:
    void reserve(size_t count) { whole_.reserve(count); }
    void append(double number);

    double operator[](size_t at) const;
    size_t size() const { return whole_.empty() ? exact_.size() : whole_.size(); }
    size_t bytes() const;

private:
    std::vector<std::int32_t> whole_;  // empty once one number needs more
    std::vector<double> exact_;
};

}  // namespace guanchao
