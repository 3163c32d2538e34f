#include "Vantrel/Backends/Common/AnswerTime.hpp"

#include <gtest/gtest.h>

namespace vantrel::backend {
namespace {

TEST(AnswerTime, deadline_atTheStart_isOneForAllRegistrations) {
    const AnswerTime time;
    const auto deadline = time.deadline();
    EXPECT_GT(deadline, AnswerTime::Clock::now());
    EXPECT_EQ(time.deadline(), deadline);
}

}  // namespace
}  // namespace vantrel::backend
