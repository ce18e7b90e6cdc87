#pragma once

#include <QColor>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace quillbar::platform {

/// How the status item's symbol looks at the moment.
struct IconAppearance {
    std::string symbol;
    /// std::nullopt leaves the colour to the panel.
    std::optional<QColor> tint;
    double alpha = 1;
    /// Whether the file's name may end in "-symbolic": panels recolour such files, and Cinnamon
    /// loads no path that contains "symbolic".
    bool isSymbolic = true;

    friend bool operator==(IconAppearance const&, IconAppearance const&) = default;
};

/// A private folder with the status icon's SVG files, for panels to read by name. Folder and files
/// are made when they are first needed and removed with this object, or when the
/// process ends before.
class IconFiles {
public:
    /// The name under which panels find the icon in folder(); empty when there is no such symbol or
    /// the file could not be written.
    [[nodiscard]] QString iconName(IconAppearance const& appearance);
    /// Empty when the folder could not be made.
    [[nodiscard]] QString folder();

private:
    bool write(QString const& name, IconAppearance const& appearance);

    std::shared_ptr<QTemporaryDir> folder_;
    std::set<QString> written_;
};

} // namespace quillbar::platform
