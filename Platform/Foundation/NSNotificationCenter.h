#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace anadrome {

/// Word that something has happened to an object.
struct NSNotification {
    std::string name;
    /// Whom it is about; may be null.
    std::shared_ptr<const void> object;
};

/// Tells whoever has asked when something happens. Any thread: blocks are called on the thread that posts,
/// before posting returns, in the order in which they were added, and may themselves use the center.
class NSNotificationCenter {
public:
    using Block = std::function<void(const NSNotification& notification)>;
    struct Observation;
    using Token = std::shared_ptr<Observation>;

    static NSNotificationCenter& defaultCenter();

    /// Calls the block for every notification of the name, or, given an object, for those about it alone.
    /// Ends by removeObserver(), or with the object. Nothing is held of the object.
    Token addObserverForName(std::string name, const std::shared_ptr<const void>& object, Block block);

    /// The same with a method of the observer, which is held weakly: the observation ends with it too.
    template <typename Observer>
    Token addObserver(const std::shared_ptr<Observer>& observer,
                      void (Observer::*selector)(const NSNotification& notification), std::string name,
                      const std::shared_ptr<const void>& object) {
        const auto call = [weak = std::weak_ptr(observer), selector](const NSNotification& notification) {
            if (const auto alive = weak.lock())
                (*alive.*selector)(notification);
        };
        return add(std::move(name), object, observer, call);
    }

    /// No call begins afterwards. Ignores null and what has ended.
    void removeObserver(const Token& token);
    /// Ends every observation of the observer.
    void removeObserver(const std::shared_ptr<const void>& observer);

    void postNotificationName(const std::string& name, const std::shared_ptr<const void>& object);

private:
    Token add(std::string name, const std::shared_ptr<const void>& object,
              const std::shared_ptr<const void>& observer, Block block);

    std::mutex m_mutex;
    std::vector<Token> m_observations;
};

} // namespace anadrome
