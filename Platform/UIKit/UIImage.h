#pragma once

#include "Platform/UIKit/UIColor.h"

#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIImage;
using UIImageRef = std::shared_ptr<const UIImage>;

/// Whether an image is drawn in the colour of its surroundings or in its own.
enum class UIImageRenderingMode { automatic = 0, alwaysOriginal = 1, alwaysTemplate = 2 };

/// One of the program's symbols, by name; a front end has the drawing. Any thread.
class UIImage {
public:
    /// Null if there is no such symbol.
    static UIImageRef systemImageNamed(const std::string& name);

    /// The same symbol in a colour.
    UIImageRef imageWithTintColor(UIColor color, UIImageRenderingMode mode) const {
        return UIImageRef(new UIImage(m_systemName, color, mode));
    }

    const std::string& systemName() const { return m_systemName; }
    /// None: the colour of the surroundings.
    const std::optional<UIColor>& tintColor() const { return m_tintColor; }
    UIImageRenderingMode renderingMode() const { return m_renderingMode; }

private:
    explicit UIImage(std::string systemName, std::optional<UIColor> tintColor = std::nullopt,
                     UIImageRenderingMode mode = UIImageRenderingMode::automatic)
        : m_systemName(std::move(systemName)), m_tintColor(tintColor), m_renderingMode(mode) {}

    const std::string m_systemName;
    const std::optional<UIColor> m_tintColor;
    const UIImageRenderingMode m_renderingMode;
};

} // namespace anadrome
