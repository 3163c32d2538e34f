// Tries every file of the folders given as arguments on the fuzz target that it is linked with.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "FuzzTarget.hpp"

namespace {

bool replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file.is_open() || file.bad()) {
        std::cerr << path << " cannot be read\n";
        return false;
    }
    std::cout << path.filename() << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t tried = 0;
    for (int index = 1; index < argc; ++index) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(argv[index], error)) {
            if (!replay(entry.path())) {
                return 1;
            }
            ++tried;
        }
        if (error) {
            std::cerr << argv[index] << ": " << error.message() << '\n';
            return 1;
        }
    }
    std::cout << tried << " inputs\n";
    return tried == 0 ? 1 : 0;
}
