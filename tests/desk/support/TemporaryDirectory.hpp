#pragma once

#include <filesystem>
#include <string_view>

namespace vantrel::desk {

/// A directory of its own (mode 0700) that goes away with this object.
class TemporaryDirectory {
  public:
    explicit TemporaryDirectory(std::string_view purpose);
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace vantrel::desk
