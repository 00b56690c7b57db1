#include "Platform/Foundation/NSNotificationCenter.h"

#include <atomic>

namespace anadrome {

/// Pointers are held weakly and compared while they are alive: another object may later get the address of a
/// dead one.
struct NSNotificationCenter::Observation {
    /// Nothing, or a pointer that may have ended.
    struct Party {
        explicit Party(const std::shared_ptr<const void>& pointer)
            : isSet(pointer != nullptr), weak(pointer) {}
        bool hasEnded() const { return isSet && weak.expired(); }
        bool is(const std::shared_ptr<const void>& pointer) const {
            return pointer && weak.lock() == pointer;
        }

        const bool isSet;
        const std::weak_ptr<const void> weak;
    };

    const std::string name;
    const Party object;
    const Party observer;
    const Block block;
    std::atomic<bool> isRemoved = false;

    bool isOver() const { return isRemoved || object.hasEnded() || observer.hasEnded(); }
    bool isAbout(const NSNotification& notification) const {
        return notification.name == name && (!object.isSet || object.is(notification.object));
    }
};

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    // Never destroyed: notifications may be posted while the program's statics are torn down.
    static auto& center = *new NSNotificationCenter;
    return center;
}

NSNotificationCenter::Token
NSNotificationCenter::addObserverForName(std::string name, const std::shared_ptr<const void>& object,
                                         Block block) {
    return add(std::move(name), object, nullptr, std::move(block));
}

NSNotificationCenter::Token NSNotificationCenter::add(std::string name,
                                                      const std::shared_ptr<const void>& object,
                                                      const std::shared_ptr<const void>& observer,
                                                      Block block) {
    const Token token(new Observation{std::move(name), Observation::Party(object),
                                      Observation::Party(observer), std::move(block)});
    // What blocks hold is let go after the lock: its end may use the center.
    std::vector<Token> ended;
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_observations, [&](const Token& observation) {
        if (observation->isOver())
            ended.push_back(observation);
        return observation->isOver();
    });
    m_observations.push_back(token);
    return token;
}

void NSNotificationCenter::removeObserver(const Token& token) {
    if (!token)
        return;
    token->isRemoved = true;
    const std::lock_guard lock(m_mutex);
    std::erase(m_observations, token);
}

void NSNotificationCenter::removeObserver(const std::shared_ptr<const void>& observer) {
    std::vector<Token> ended;
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_observations, [&](const Token& observation) {
        if (!observation->observer.is(observer))
            return false;
        observation->isRemoved = true;
        ended.push_back(observation);
        return true;
    });
}

void NSNotificationCenter::postNotificationName(const std::string& name,
                                                const std::shared_ptr<const void>& object) {
    const NSNotification notification{name, object};
    std::vector<Token> observations;
    {
        const std::lock_guard lock(m_mutex);
        observations = m_observations;
    }
    for (const Token& observation : observations)
        if (!observation->isRemoved && observation->isAbout(notification))
            observation->block(notification);
}

} // namespace anadrome
