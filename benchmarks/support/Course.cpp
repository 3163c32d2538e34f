#include "benchmarks/support/Course.hpp"

namespace vantrel::bench {

namespace {

constexpr int rowLength = desk::DisplayLayout::outputCount;
constexpr int width = 512;
constexpr int height = 768;

}  // namespace

Course usualCourse() {
    Course course;
    course.right = {.x = 700, .y = 500};
    course.left = {.x = -512, .y = 484};
    course.stops = {course.right, course.left};
    return course;
}

Course layOutDisplayRow(desk::Desk& desk) {
    std::vector<desk::PlacedDisplay> displays;
    for (int output = 0; output < rowLength; ++output) {
        displays.push_back(
            {.output = output, .bounds = {.x = -output * width, .y = 0, .width = width, .height = height}});
    }
    desk.layout().apply(displays);

    const auto centre = [](int output) { return desk::MainPoint{.x = -output * width + width / 2, .y = height / 2}; };
    Course course;
    course.right = centre(0);
    course.left = centre(1);
    course.stops = {centre(0)};
    for (int output = rowLength - 1; output > 0; --output) {
        course.stops.push_back(centre(output));
    }
    return course;
}

}  // namespace vantrel::bench
