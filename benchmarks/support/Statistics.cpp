#include "benchmarks/support/Statistics.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vantrel::bench {

double percentile(std::vector<double> values, double share) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

double median(const std::vector<double>& values) {
    return percentile(values, 0.5);
}

}  // namespace vantrel::bench
