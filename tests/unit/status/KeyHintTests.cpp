#include "Vantrel/Desktop/StatusItem/KeyHint.hpp"

#include <gtest/gtest.h>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {
namespace {

std::string printed(const std::string& key, KeyHintStyle style) {
    const GVariantPointer hint(g_variant_ref_sink(keyHint(key, style)));
    const GCharPointer text(g_variant_print(hint.get(), FALSE));
    return text.get();
}

TEST(KeyHint, keyHint_comma_hasTheNameThatTheToolkitReads) {
    EXPECT_EQ(printed(",", KeyHintStyle::x11Names), "[['Control', 'comma']]");
    EXPECT_EQ(printed(",", KeyHintStyle::characters), "[['Control', ',']]");
}

TEST(KeyHint, keyHint_letter_isItself) {
    EXPECT_EQ(printed("q", KeyHintStyle::x11Names), "[['Control', 'q']]");
    EXPECT_EQ(printed("q", KeyHintStyle::characters), "[['Control', 'q']]");
}

}  // namespace
}  // namespace vantrel::desktop
