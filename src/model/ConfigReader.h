#pragma once

#include "model/Config.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillbar {

/// Builds a record from the events of a JSON parser, without a document tree in between: neither
/// deep nesting nor large unknown values cost anything, and the first mistake ends the parse.
class ConfigReader final : public nlohmann::json_sax<nlohmann::json> {
public:
    /// The record, once the parse has succeeded; nothing when a required key was missing.
    [[nodiscard]] std::optional<Config> take();

    bool null() override { return scalar(nullptr); }
    bool boolean(bool value) override { return scalar(value); }
    bool number_integer(number_integer_t value) override { return scalar(value); }
    bool number_unsigned(number_unsigned_t value) override { return scalar(value); }
    bool number_float(number_float_t value, string_t const& text) override;
    bool string(string_t& value) override { return scalar(std::move(value)); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return enter(Container::Object); }
    bool key(string_t& value) override;
    bool end_object() override;
    bool start_array(std::size_t) override { return enter(Container::Array); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t, std::string const&, nlohmann::detail::exception const&) override
    {
        return false;
    }

private:
    using Scalar
        = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string>;

    /// What the innermost open object or array stands for.
    enum class Place {
        Record,
        Pinned,
        MenuHotkey,
        ShortcutHotkeys,
        ShortcutHotkey,
        LaunchAtLoginShortcuts,
        GroupOf,
        Ignored,
    };

    enum class Container { Object, Array };
    struct Field;
    static Field const fields[];

    bool enter(Container container);
    bool leave();
    [[nodiscard]] std::optional<Place> placeOf(Container container) const;
    [[nodiscard]] std::optional<Place> placeInRecord(Container container) const;
    void clear(Place place);
    bool scalar(Scalar value);
    bool recordScalar(Scalar& value);
    bool hotkeyScalar(Scalar const& value);

    std::vector<Place> places_;
    std::string key_;
    std::string shortcutName_;
    std::optional<std::int64_t> keyCode_;
    std::optional<std::uint32_t> modifiers_;
    std::optional<std::vector<std::string>> pinned_;
    std::optional<std::string> iconSymbol_;
    Config config_;
};

} // namespace quillbar
