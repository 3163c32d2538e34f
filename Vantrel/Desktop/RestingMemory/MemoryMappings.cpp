#include "Vantrel/Desktop/RestingMemory/MemoryMappings.hpp"

#include <charconv>
#include <optional>

namespace vantrel::desktop {

namespace {

/// The next word of the line, taken off it.
std::string_view takeWord(std::string_view& line) {
    const std::size_t start = line.find_first_not_of(' ');
    if (start == std::string_view::npos) {
        line = {};
        return {};
    }
    line.remove_prefix(start);
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

std::optional<std::uintptr_t> fromHex(std::string_view text) {
    std::uintptr_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// The range of a line that begins a mapping; none for every other line.
std::optional<MemoryRange> rangeOf(std::string_view word) {
    const std::size_t dash = word.find('-');
    if (dash == std::string_view::npos) {
        return std::nullopt;
    }
    const auto begin = fromHex(word.substr(0, dash));
    const auto end = fromHex(word.substr(dash + 1));
    return begin && end ? std::optional(MemoryRange{*begin, *end}) : std::nullopt;
}

/// The file that the rest of a mapping's first line shows, if it is a private, read-only part of one; else empty.
std::string_view readOnlyFile(std::string_view rest) {
    const std::string_view permissions = takeWord(rest);
    for (int skipped = 0; skipped < 3; ++skipped) {  // offset, device, inode
        takeWord(rest);
    }
    const std::string_view file = takeWord(rest);
    return (permissions == "r-xp" || permissions == "r--p") && file.starts_with('/') ? file : std::string_view();
}

}  // namespace

std::vector<FileMapping> unchangedFileMappings(std::string_view smaps) {
    std::vector<FileMapping> mappings;
    bool isCandidate = false;
    while (!smaps.empty()) {
        std::string_view line = smaps.substr(0, smaps.find('\n'));
        smaps.remove_prefix(line.size() + (line.size() < smaps.size() ? 1 : 0));
        const std::string_view word = takeWord(line);
        if (const auto range = rangeOf(word)) {
            const std::string_view file = readOnlyFile(line);
            isCandidate = !file.empty();
            if (isCandidate) {
                mappings.push_back({*range, file});
            }
        } else if (isCandidate && (word == "Anonymous:" || word == "Swap:") && takeWord(line) != "0") {
            // Pages that were written before the mapping became read-only, as the linker does: they exist only here, or
            // by now only in the swap space.
            mappings.pop_back();
            isCandidate = false;
        }
    }
    return mappings;
}

}  // namespace vantrel::desktop
