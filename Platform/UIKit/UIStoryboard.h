#pragma once

#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIStoryboardScene;
class UIViewController;

/// Makes screens by name. Main thread only.
class UIStoryboard {
public:
    /// Makes a storyboard known, or replaces the one of that name. Its scene is the initial one; without one
    /// it has no initial controller.
    static void registerStoryboard(const std::string& name, const std::optional<UIStoryboardScene>& initial);

    /// An unknown name is fatal.
    static UIStoryboard storyboardWithName(const std::string& name);

    /// A new controller each time, whose views are built when its view is first asked for. Null if the
    /// storyboard has no initial controller.
    std::shared_ptr<UIViewController> instantiateInitialViewController() const;

private:
    explicit UIStoryboard(std::shared_ptr<const UIStoryboardScene> initial) : m_initial(std::move(initial)) {}

    std::shared_ptr<const UIStoryboardScene> m_initial;
};

} // namespace anadrome
