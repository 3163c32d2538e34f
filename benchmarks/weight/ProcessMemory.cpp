#include "benchmarks/weight/ProcessMemory.hpp"

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace vantrel::bench {

namespace {

std::ifstream open(pid_t process, const char* name) {
    std::ifstream file("/proc/" + std::to_string(process) + "/" + name);
    if (!file) {
        throw std::runtime_error("cannot look into process " + std::to_string(process));
    }
    return file;
}

/// Lines of the form "Name:   123", by name.
std::map<std::string, double> numbersIn(std::ifstream file) {
    std::map<std::string, double> numbers;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string name;
        double number = 0;
        if (words >> name >> number && name.ends_with(':')) {
            name.pop_back();
            numbers[name] = number;
        }
    }
    return numbers;
}

}  // namespace

ProcessMemory memoryOf(pid_t process) {
    constexpr double kibibytesInMegabyte = 1024;
    auto numbers = numbersIn(open(process, "smaps_rollup"));
    return {.resident = numbers["Rss"] / kibibytesInMegabyte,
            .proportional = numbers["Pss"] / kibibytesInMegabyte,
            .unique = (numbers["Private_Clean"] + numbers["Private_Dirty"]) / kibibytesInMegabyte,
            .privateDirty = numbers["Private_Dirty"] / kibibytesInMegabyte};
}

ProcessCounts countsOf(pid_t process) {
    auto numbers = numbersIn(open(process, "io"));
    // The name of the program, in parentheses, may hold anything; the tenth and the twelfth field are the faults.
    std::string line;
    auto file = open(process, "stat");
    std::getline(file, line);
    std::istringstream words(line.substr(line.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 10; ++field) {
        words >> skipped;
    }
    ProcessCounts counts;
    counts.writtenBytes = static_cast<std::int64_t>(numbers["wchar"]);
    words >> counts.minorFaults >> skipped >> counts.majorFaults;
    return counts;
}

}  // namespace vantrel::bench
