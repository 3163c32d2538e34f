#pragma once

#include <vector>

namespace vantrel::bench {

/// The value that the given share (0 to 1) of the values does not exceed; 0 when there are none.
double percentile(std::vector<double> values, double share);

/// The value in the middle; 0 when there are none.
double median(const std::vector<double>& values);

}  // namespace vantrel::bench
