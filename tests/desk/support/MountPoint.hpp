#pragma once

#include <cstddef>
#include <filesystem>

namespace vantrel::desk {

/// Gives this process, and the programs that it starts from now on, mounts of their own, which end with them. To be
/// called before anything else in a test that mounts. Needs root or user namespaces; throws where there are neither,
/// because to root no file is read-only and no other way tells the truth.
void enterPrivateMounts();

/// A file system of its own at a directory, for as long as this object lives.
class MountPoint {
  public:
    /// An empty file system in memory that holds that many bytes and no more.
    static MountPoint ofSize(const std::filesystem::path& directory, std::size_t bytes);

    /// The directory as it is, with writing refused.
    static MountPoint readOnly(const std::filesystem::path& directory);

    ~MountPoint();
    MountPoint(const MountPoint&) = delete;
    MountPoint& operator=(const MountPoint&) = delete;

    /// Lets a read-only directory be written again.
    void allowWriting();

    /// Writes the file until the file system is full to the last byte.
    static void fill(const std::filesystem::path& file);

  private:
    explicit MountPoint(std::filesystem::path directory) : directory_(std::move(directory)) {}

    std::filesystem::path directory_;
};

}  // namespace vantrel::desk
