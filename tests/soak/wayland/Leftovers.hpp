#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace vantrel::soak {

/// What agents have laid into the runtime directory, by the files' names.
std::set<std::string> filesOfAgents(const std::filesystem::path& runtimeDirectory);

/// The helper programs of agents of that session that run now, by their names.
std::vector<std::string> helpersOfAgents(const std::filesystem::path& runtimeDirectory);

}  // namespace vantrel::soak
