#include "VantrelCore/UTF8.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vantrel {

namespace {

/// The sequences of one range of leading bytes. Only the second byte's range varies; the rest are 80 to BF.
struct SequenceForm {
    unsigned char firstLead;
    unsigned char lastLead;
    unsigned char lowestSecond;
    unsigned char highestSecond;
    std::size_t length;
};

/// "Well-Formed UTF-8 Byte Sequences" of the Unicode standard (table 3-7), without its first row, ASCII.
constexpr std::array<SequenceForm, 8> sequenceForms{{
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};

constexpr unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

constexpr bool isWithin(unsigned char byte, unsigned char lowest, unsigned char highest) {
    return byte >= lowest && byte <= highest;
}

/// The length of the sequence that the text begins with; 0 when it is none. The text is not empty.
std::size_t leadingSequenceLength(std::string_view text) {
    const unsigned char lead = byteAt(text, 0);
    if (lead < 0x80) {
        return 1;
    }
    const auto* const form = std::find_if(
        sequenceForms.begin(), sequenceForms.end(),
        [lead](const SequenceForm& candidate) { return isWithin(lead, candidate.firstLead, candidate.lastLead); });
    if (form == sequenceForms.end() || text.size() < form->length ||
        !isWithin(byteAt(text, 1), form->lowestSecond, form->highestSecond)) {
        return 0;
    }
    for (std::size_t index = 2; index < form->length; ++index) {
        if (!isWithin(byteAt(text, index), 0x80, 0xBF)) {
            return 0;
        }
    }
    return form->length;
}

}  // namespace

bool isValidUTF8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = leadingSequenceLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace vantrel
