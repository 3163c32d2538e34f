#include "Vantrel/Channel/SettingsMessages.hpp"

namespace vantrel::settings_messages {

namespace {

constexpr auto contentName = "content";
constexpr auto contentType = "(tsusuasiasibsbbbuu)";
constexpr auto rowTextName = "row-text";
constexpr auto placeName = "place";
constexpr auto reportName = "report";
constexpr auto wantedRowName = "wanted-row";

GVariant* texts(const std::vector<std::string>& values) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_STRING_ARRAY);
    for (const std::string& value : values) {
        g_variant_builder_add(&builder, "s", value.c_str());
    }
    return g_variant_builder_end(&builder);
}

/// Child number `index` of a body whose type is known.
GVariantPointer child(const Message& message, gsize index) {
    return GVariantPointer(g_variant_get_child_value(message.body.get(), index));
}

/// Reads the children of a body one after the other.
class Reader {
  public:
    explicit Reader(const Message& message) : message_(message) {}

    Reader& operator>>(std::uint64_t& value) { return take(value, g_variant_get_uint64); }
    Reader& operator>>(std::uint32_t& value) { return take(value, g_variant_get_uint32); }
    Reader& operator>>(std::int32_t& value) { return take(value, g_variant_get_int32); }
    Reader& operator>>(bool& value) {
        value = g_variant_get_boolean(child(message_, next_++).get()) != FALSE;
        return *this;
    }
    Reader& operator>>(std::string& value) {
        value = g_variant_get_string(child(message_, next_++).get(), nullptr);
        return *this;
    }
    Reader& operator>>(std::vector<std::string>& values) {
        const GVariantPointer array = child(message_, next_++);
        GVariantIter iterator;
        g_variant_iter_init(&iterator, array.get());
        const gchar* value = nullptr;
        while (g_variant_iter_next(&iterator, "&s", &value) != FALSE) {
            values.emplace_back(value);
        }
        return *this;
    }

  private:
    template <typename Value, typename Get>
    Reader& take(Value& value, Get get) {
        value = get(child(message_, next_++).get());
        return *this;
    }

    const Message& message_;
    gsize next_ = 0;
};

}  // namespace

Message content(const WindowContent& content) {
    return {
        contentName,
        g_variant_new("(tsusu@asi@asibsbbbuu)", content.lastReport, content.recorderTitle.c_str(),
                      content.recordedEvents, content.shortcutStatus.c_str(), content.shortcutStatusColor,
                      texts(content.modes), content.selectedMode, texts(content.animations), content.selectedAnimation,
                      static_cast<gboolean>(content.isSoundChecked), content.savedPointsSummary.c_str(),
                      static_cast<gboolean>(content.isEmptyLabelHidden), static_cast<gboolean>(content.isTableHidden),
                      static_cast<gboolean>(content.isClearingEnabled), content.rows, content.rowsVersion)};
}

std::optional<WindowContent> contentOf(const Message& message) {
    if (!message.is(contentName, contentType)) {
        return std::nullopt;
    }
    WindowContent result;
    Reader(message) >> result.lastReport >> result.recorderTitle >> result.recordedEvents >> result.shortcutStatus >>
        result.shortcutStatusColor >> result.modes >> result.selectedMode >> result.animations >>
        result.selectedAnimation >> result.isSoundChecked >> result.savedPointsSummary >> result.isEmptyLabelHidden >>
        result.isTableHidden >> result.isClearingEnabled >> result.rows >> result.rowsVersion;
    return result;
}

Message rowText(const WindowRowText& text) {
    return {rowTextName, g_variant_new("(uus)", text.row.rowsVersion, text.row.row, text.text.c_str())};
}

std::optional<WindowRowText> rowTextOf(const Message& message) {
    if (!message.is(rowTextName, "(uus)")) {
        return std::nullopt;
    }
    WindowRowText result;
    Reader(message) >> result.row.rowsVersion >> result.row.row >> result.text;
    return result;
}

Message place(const WindowPlace& place) {
    return {placeName, g_variant_new("(ii)", place.x, place.y)};
}

std::optional<WindowPlace> placeOf(const Message& message) {
    if (!message.is(placeName, "(ii)")) {
        return std::nullopt;
    }
    WindowPlace result;
    Reader(message) >> result.x >> result.y;
    return result;
}

Message report(const WindowReport& report) {
    return {reportName, g_variant_new("(tuiuu)", report.number, static_cast<std::uint32_t>(report.kind), report.value,
                                      report.key, report.flags)};
}

std::optional<WindowReport> reportOf(const Message& message) {
    if (!message.is(reportName, "(tuiuu)")) {
        return std::nullopt;
    }
    WindowReport result;
    std::uint32_t kind = 0;
    Reader(message) >> result.number >> kind >> result.value >> result.key >> result.flags;
    if (kind > static_cast<std::uint32_t>(WindowReport::Kind::clearPressed)) {
        return std::nullopt;
    }
    result.kind = static_cast<WindowReport::Kind>(kind);
    return result;
}

Message wantRow(const WindowRow& row) {
    return {wantedRowName, g_variant_new("(uu)", row.rowsVersion, row.row)};
}

std::optional<WindowRow> wantedRowOf(const Message& message) {
    if (!message.is(wantedRowName, "(uu)")) {
        return std::nullopt;
    }
    WindowRow result;
    Reader(message) >> result.rowsVersion >> result.row;
    return result;
}

}  // namespace vantrel::settings_messages
