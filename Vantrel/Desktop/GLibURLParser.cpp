#include "Vantrel/Desktop/GLibURLParser.hpp"

#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel::desktop {

namespace {

/// The pieces of a URL between which "?" and "#" stand. GLib gets the first alone: given the whole, it refuses the URL
/// for one bad percent code in its query.
struct Pieces {
    std::string_view hierarchy;  ///< scheme, authority and path
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;
};

Pieces piecesOf(std::string_view text) {
    Pieces pieces;
    if (const std::size_t hash = text.find('#'); hash != std::string_view::npos) {
        pieces.fragment = text.substr(hash + 1);
        text = text.substr(0, hash);
    }
    if (const std::size_t questionMark = text.find('?'); questionMark != std::string_view::npos) {
        pieces.query = text.substr(questionMark + 1);
        text = text.substr(0, questionMark);
    }
    pieces.hierarchy = text;
    return pieces;
}

/// The text with its percent codes replaced; none for a bad code, a NUL or what is not UTF-8.
std::optional<std::string> decoded(std::string_view text) {
    const GCharPointer result(g_uri_unescape_segment(text.data(), text.data() + text.size(), nullptr));
    if (!result || g_utf8_validate(result.get(), -1, nullptr) == FALSE) {
        return std::nullopt;
    }
    return std::string(result.get());
}

/// The items of the query in order. Not GUriParamsIter: it gives up at an item without "=".
std::optional<std::vector<URLQueryItem>> itemsOf(std::string_view query) {
    std::vector<URLQueryItem> items;
    while (const auto piece = takePiece(query, '&')) {
        const std::size_t equalsSign = piece->find('=');
        auto name = decoded(piece->substr(0, equalsSign));
        if (!name) {
            return std::nullopt;
        }
        URLQueryItem item{std::move(*name), std::nullopt};
        if (equalsSign != std::string_view::npos) {
            item.value = decoded(piece->substr(equalsSign + 1));
            if (!item.value) {
                return std::nullopt;
            }
        }
        items.push_back(std::move(item));
    }
    return items;
}

/// Scheme, host and path; none when they are not those of a URL.
std::optional<URLComponents> hierarchyOf(const std::string& text) {
    char* schemeText = nullptr;
    char* hostText = nullptr;
    char* pathText = nullptr;
    // The host is a command's name, not a machine's: it must not go through the rules for domain names.
    if (g_uri_split(text.c_str(), G_URI_FLAGS_NON_DNS, &schemeText, nullptr, &hostText, nullptr, &pathText, nullptr,
                    nullptr, nullptr) == FALSE) {
        return std::nullopt;
    }
    const GCharPointer scheme(schemeText);
    const GCharPointer host(hostText);
    const GCharPointer path(pathText);
    URLComponents components;
    if (scheme) {
        // GLib gives it in lower case.
        components.scheme = text.substr(0, std::string_view(scheme.get()).size());
    }
    if (host) {
        components.host = host.get();
    }
    components.path = path.get();
    return components;
}

}  // namespace

std::optional<URLComponents> GLibURLParser::parse(std::string_view text) const {
    // A C string ends at a NUL, and GLib drops white space: what it would then see is not the text that came.
    constexpr std::string_view forbidden(" \t\n\v\f\r\0", 7);
    const Pieces pieces = piecesOf(text);
    if (pieces.hierarchy.find_first_of(forbidden) != std::string_view::npos) {
        return std::nullopt;
    }
    if (pieces.fragment && !decoded(*pieces.fragment)) {
        return std::nullopt;
    }
    auto components = hierarchyOf(std::string(pieces.hierarchy));
    if (components && pieces.query) {
        components->queryItems = itemsOf(*pieces.query).value_or(std::vector<URLQueryItem>());
    }
    return components;
}

}  // namespace vantrel::desktop
