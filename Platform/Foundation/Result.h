#pragma once

#include "Platform/Foundation/NSError.h"

#include <utility>
#include <variant>

namespace anadrome {

/// A value or the error that stood in its way. What can fail without a value returns std::optional<NSError>.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    Result(NSError error) : m_content(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_content.index() == 0; }

    /// Precondition of these three: there is a value.
    T& operator*() { return std::get<0>(m_content); }
    const T& operator*() const { return std::get<0>(m_content); }
    T* operator->() { return &std::get<0>(m_content); }

    /// Precondition: there is no value.
    const NSError& error() const { return std::get<1>(m_content); }

private:
    std::variant<T, NSError> m_content;
};

} // namespace anadrome
