#pragma once

#include "Platform/Foundation/URL.h"
#include "Platform/UIKit/UIViewController.h"

#include <optional>
#include <string>
#include <variant>

namespace anadrome {

/// An address on the web.
struct WebLink {
    std::string address;

    friend bool operator==(const WebLink&, const WebLink&) = default;
};

/// The sheet that hands texts, files and links on to other programs.
class UIActivityViewController : public UIViewController {
public:
    using Item = std::variant<std::string, URL, WebLink>;
    /// The kind of activity, none if the user chose none, and whether it was carried out.
    using CompletionHandler = std::function<void(const std::optional<std::string>& activity, bool completed)>;

    explicit UIActivityViewController(std::vector<Item> items) : m_items(std::move(items)) {}

    const std::vector<Item>& activityItems() const { return m_items; }
    /// Called on the main queue after the sheet has gone.
    void setCompletionHandler(CompletionHandler handler) { m_completionHandler = std::move(handler); }

    /// The front end carried an activity out or failed to, or the user cancelled: the sheet goes. Without
    /// effect while it isn't presented.
    void finish(const std::optional<std::string>& activity, bool completed);

private:
    const std::vector<Item> m_items;
    CompletionHandler m_completionHandler;
};

} // namespace anadrome
