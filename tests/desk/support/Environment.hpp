#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::desk {

/// The environment variables of a child process. Starts with the few that any program needs (PATH, the locale and the
/// sanitizers' options), so that nothing of the person's own session reaches a private desk.
class Environment {
  public:
    static Environment minimal();

    void set(std::string_view name, std::string_view value) {
        variables_.insert_or_assign(std::string(name), std::string(value));
    }
    void unset(std::string_view name) { variables_.erase(std::string(name)); }

    /// For tests of a program's size. Where the address sanitizer is built in, it keeps what was freed for a while, to
    /// find late uses of it; programs started from now on do without that.
    void giveBackFreedMemory();

    /// The variables in the form "NAME=value".
    [[nodiscard]] std::vector<std::string> entries() const;

  private:
    std::map<std::string, std::string> variables_;
};

}  // namespace vantrel::desk
