#include "Vantrel/Backends/Sway/SwayConfiguration.hpp"

#include <strings.h>
#include <wordexp.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "Vantrel/Handles/FileContents.hpp"
#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel::sway {

namespace {

constexpr std::uintmax_t largestFile = 4U * 1024 * 1024;  // nobody writes so much by hand
constexpr auto defaultMode = "default";

/// Words, of which one in quotation marks may hold blanks; the marks are taken off.
std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    bool isInWord = false;
    char quote = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (quote == 0 && blanks.find(character) != std::string_view::npos) {
            isInWord = false;
            continue;
        }
        if (!isInWord) {
            words.emplace_back();
            isInWord = true;
        }
        if (quote == 0 && (character == '"' || character == '\'')) {
            quote = character;
        } else if (character == quote) {
            quote = 0;
        } else if (character == '\\' && index + 1 < text.size()) {
            words.back() += text[++index];
        } else {
            words.back() += character;
        }
    }
    return words;
}

struct NamedModifier {
    const char* name;
    std::uint32_t bit;
};

constexpr std::array namedModifiers{
    NamedModifier{"Shift", wayland::shiftModifier},     NamedModifier{"Lock", wayland::capsModifier},
    NamedModifier{"Control", wayland::controlModifier}, NamedModifier{"Ctrl", wayland::controlModifier},
    NamedModifier{"Mod1", wayland::altModifier},        NamedModifier{"Alt", wayland::altModifier},
    NamedModifier{"Mod2", wayland::numModifier},        NamedModifier{"Mod3", wayland::mod3Modifier},
    NamedModifier{"Mod4", wayland::logoModifier},       NamedModifier{"Super", wayland::logoModifier},
    NamedModifier{"Mod5", wayland::mod5Modifier}};

std::optional<std::uint32_t> modifierNamed(const std::string& name) {
    const auto* const found = std::find_if(namedModifiers.begin(), namedModifiers.end(), [&](const auto& modifier) {
        return strcasecmp(modifier.name, name.c_str()) == 0;
    });
    return found == namedModifiers.end() ? std::nullopt : std::optional(found->bit);
}

/// A combination with one key besides the modifiers; none for mouse buttons, and for several keys at once.
std::optional<wayland::ConfiguredBinding> bindingOf(std::string_view combination, bool byCode) {
    wayland::ConfiguredBinding binding;
    bool hasKey = false;
    while (const auto piece = takePiece(combination, '+')) {
        const std::string part(*piece);
        if (const auto modifier = modifierNamed(part)) {
            binding.modifiers |= *modifier;
            continue;
        }
        if (part.starts_with("Group") || part == "Mode_switch") {
            continue;  // of one layout only, but still the person's
        }
        if (hasKey) {
            return std::nullopt;
        }
        hasKey = true;
        if (byCode) {
            std::from_chars(part.data(), part.data() + part.size(), binding.keycode);
        } else {
            binding.keysym = xkb_keysym_from_name(part.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
        }
    }
    binding.modifiers &= ~(wayland::capsModifier | wayland::numModifier);
    const bool isKnown = binding.keycode != 0 || binding.keysym != XKB_KEY_NoSymbol;
    return isKnown ? std::optional(binding) : std::nullopt;
}

class Reader {
  public:
    void readFile(const std::filesystem::path& file) {
        std::error_code error;
        const std::filesystem::path real = std::filesystem::canonical(file, error);
        // A file that includes itself would never end.
        if (error || std::filesystem::file_size(real, error) > largestFile || error || !files_.insert(real).second) {
            return;
        }
        readText(contentsOf(real).value_or(""), real);
    }

    void readMain(std::string_view text, const std::filesystem::path& file) {
        std::error_code error;
        files_.insert(std::filesystem::weakly_canonical(file, error));
        readText(text, file);
    }

    [[nodiscard]] std::vector<wayland::ConfiguredBinding> take() { return std::move(bindings_); }

  private:
    using Words = std::vector<std::string>;

    void readText(std::string_view text, const std::filesystem::path& file) {
        std::vector<std::string> blocks;  // the beginning of each that is open
        std::string pending;              // a line that may open a block on the next one
        while (const auto firstLine = takePiece(text, '\n')) {
            std::string line(*firstLine);
            while (line.ends_with('\\')) {
                line.pop_back();
                const auto next = takePiece(text, '\n');
                if (!next) {
                    break;
                }
                line += *next;
            }
            const std::string_view content = trimmed(line);
            if (content.empty() || content.front() == '#') {
                continue;
            }
            if (content == "{") {
                blocks.push_back(std::exchange(pending, {}));
                continue;
            }
            readLine(std::exchange(pending, {}), blocks, file);
            if (content == "}") {
                if (!blocks.empty()) {
                    blocks.pop_back();
                }
            } else if (content.ends_with('{')) {
                blocks.emplace_back(trimmed(content.substr(0, content.size() - 1)));
            } else {
                pending = content;
            }
        }
        readLine(pending, blocks, file);
    }

    /// A line within blocks says the same as a line that begins with what opened them.
    void readLine(const std::string& line, const std::vector<std::string>& blocks, const std::filesystem::path& file) {
        if (line.empty()) {
            return;
        }
        std::string whole;
        for (const std::string& block : blocks) {
            whole += block + ' ';
        }
        whole += line;
        const Words beginning = wordsOf(whole);
        if (beginning.front() == "set" && beginning.size() > 2 && beginning[1].starts_with('$')) {
            std::string value;
            for (std::size_t index = 2; index < beginning.size(); ++index) {
                value += (index > 2 ? " " : "") + beginning[index];
            }
            variables_[beginning[1]] = replaced(value);
        } else if (beginning.front() == "include") {
            const std::string_view text = trimmed(std::string_view(whole).substr(beginning.front().size()));
            include(replaced(std::string(text)), file);
        } else {
            obey(wordsOf(replaced(whole)));
        }
    }

    void obey(Words words) {
        if (words.empty()) {
            return;  // a variable that stands for nothing
        }
        std::string mode = defaultMode;
        if (words.front() == "mode") {
            words.erase(words.begin());
            std::erase(words, "--pango_markup");
            if (words.size() < 2) {
                return;
            }
            mode = words.front();
            words.erase(words.begin());
        }
        const std::string command = words.front();
        const bool byCode = command == "bindcode" || command == "unbindcode";
        if (!byCode && command != "bindsym" && command != "unbindsym") {
            return;
        }
        const auto combination = std::find_if(words.begin() + 1, words.end(),
                                              [](const std::string& word) { return !word.starts_with("--"); });
        auto binding = combination == words.end() ? std::nullopt : bindingOf(*combination, byCode);
        if (!binding) {
            return;
        }
        binding->mode = mode;
        if (command.starts_with("un")) {
            std::erase(bindings_, *binding);
        } else {
            bindings_.push_back(*binding);
        }
    }

    /// The longest name that fits wins; "$$" is a dollar sign.
    [[nodiscard]] std::string replaced(const std::string& text) const {
        std::string result;
        for (std::size_t index = 0; index < text.size(); ++index) {
            if (text[index] != '$') {
                result += text[index];
                continue;
            }
            if (text.compare(index, 2, "$$") == 0) {
                result += '$';
                ++index;
                continue;
            }
            const std::pair<const std::string, std::string>* best = nullptr;
            for (const auto& variable : variables_) {
                if (text.compare(index, variable.first.size(), variable.first) == 0 &&
                    (best == nullptr || variable.first.size() > best->first.size())) {
                    best = &variable;
                }
            }
            result += best == nullptr ? "$" : best->second;
            index += best == nullptr ? 0 : best->first.size() - 1;
        }
        return result;
    }

    /// The shell's expansions, without its commands.
    void include(const std::string& pattern, const std::filesystem::path& from) {
        wordexp_t files{};
        if (wordexp(fromTheFile(pattern, from).c_str(), &files, WRDE_NOCMD) != 0) {
            return;
        }
        const std::vector<std::string> names(files.we_wordv, files.we_wordv + files.we_wordc);
        wordfree(&files);
        for (const std::string& name : names) {
            readFile(name);
        }
    }

    /// Relative names start where the file stands that includes them, and not where this process stands.
    static std::string fromTheFile(const std::string& pattern, const std::filesystem::path& from) {
        const std::size_t first = pattern.find_first_not_of("\"'");
        if (first == std::string::npos || std::string_view("/~$").find(pattern[first]) != std::string_view::npos) {
            return pattern;
        }
        const std::string directory = from.parent_path();
        std::string quoted;
        for (const char character : directory) {
            quoted += '\\';
            quoted += character;
        }
        return quoted + "/" + pattern;
    }

    std::map<std::string, std::string> variables_;
    std::set<std::filesystem::path> files_;
    std::vector<wayland::ConfiguredBinding> bindings_;
};

}  // namespace

std::vector<wayland::ConfiguredBinding> bindingsInConfiguration(std::string_view text,
                                                                const std::filesystem::path& mainFile) {
    Reader reader;
    reader.readMain(text, mainFile);
    return reader.take();
}

}  // namespace vantrel::sway
