#include "benchmarks/where/JumpStamps.hpp"

#include <fstream>

namespace vantrel::bench {

void writeStamps(const std::filesystem::path& file, const std::vector<JumpStamps>& jumps) {
    std::ofstream stream(file);
    for (const JumpStamps& jump : jumps) {
        for (const std::int64_t moment : jump) {
            stream << moment << ' ';
        }
        stream << '\n';
    }
}

std::vector<JumpStamps> readStamps(const std::filesystem::path& file) {
    std::vector<JumpStamps> jumps;
    std::ifstream stream(file);
    while (true) {
        JumpStamps jump{};
        for (std::int64_t& moment : jump) {
            stream >> moment;
        }
        if (!stream) {
            return jumps;
        }
        jumps.push_back(jump);
    }
}

}  // namespace vantrel::bench
