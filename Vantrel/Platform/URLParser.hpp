#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// One item of a URL's query. "name=" has an empty value, "name" alone has none.
struct URLQueryItem {
    std::string name;
    std::optional<std::string> value;
};

/// The parts of a URL that the commands read, percent-decoded.
struct URLComponents {
    std::string scheme;               ///< as written, not lower-cased; empty when the text has none
    std::optional<std::string> host;  ///< none when the URL has no authority
    std::string path;
    std::vector<URLQueryItem> queryItems;  ///< in order; empty when the query cannot be parsed
};

/// Splits URLs (RFC 3986).
class URLParser {
  public:
    virtual ~URLParser() = default;

    /// The parts of the text; none when it cannot be parsed as a URL. A query that cannot be parsed is no query.
    [[nodiscard]] virtual std::optional<URLComponents> parse(std::string_view text) const = 0;
};

}  // namespace vantrel
