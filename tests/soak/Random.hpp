#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace vantrel::soak {

/// Random choices that a seed repeats on every machine: the standard library's distributions may differ from one to
/// the next, its engine may not.
class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    /// A whole number from low to high, both included.
    int between(int low, int high) {
        return low + static_cast<int>(engine_() % static_cast<std::uint64_t>(high - low + 1));
    }

    /// True once in so many times.
    bool onceIn(int times) { return between(1, times) == 1; }

    /// A number from low to high that is as likely to lie between 1 and 10 as between 10 and 100.
    double onAllScales(double low, double high) {
        constexpr double steps = 1U << 30U;
        const double share = static_cast<double>(engine_() % (1U << 30U)) / steps;
        return low * std::pow(high / low, share);
    }

    template <typename Element>
    const Element& oneOf(const std::vector<Element>& elements) {
        return elements[static_cast<std::size_t>(engine_() % elements.size())];
    }

    /// Brings the elements into random order.
    template <typename Element>
    void shuffle(std::vector<Element>& elements) {
        for (std::size_t left = elements.size(); left > 1; --left) {
            std::swap(elements[left - 1], elements[static_cast<std::size_t>(engine_() % left)]);
        }
    }

  private:
    std::mt19937_64 engine_;
};

}  // namespace vantrel::soak
