#pragma once

namespace anadrome {

/// A colour by what it is for; a front end has the shade, in light and in dark.
class UIColor {
public:
    enum class Role { label, separator };

    /// Of texts.
    static constexpr UIColor labelColor() { return UIColor(Role::label); }
    /// Of lines between things.
    static constexpr UIColor separatorColor() { return UIColor(Role::separator); }

    Role role() const { return m_role; }

    friend constexpr bool operator==(UIColor, UIColor) = default;

private:
    explicit constexpr UIColor(Role role) : m_role(role) {}

    Role m_role;
};

} // namespace anadrome
