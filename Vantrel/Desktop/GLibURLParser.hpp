#pragma once

#include "Vantrel/Platform/URLParser.hpp"

namespace vantrel::desktop {

/// Splits URLs with GLib's URI functions. Stricter than these in one way and milder in another: text with white space
/// or a NUL before the query is no URL, while a bad percent code in the query spoils the query alone. A plus sign in
/// the query is a plus sign. Takes time and memory in proportion to the text.
class GLibURLParser final : public URLParser {
  public:
    [[nodiscard]] std::optional<URLComponents> parse(std::string_view text) const override;
};

}  // namespace vantrel::desktop
