#include "Platform/UIKit/UIWindowScene.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIWindowSceneDelegate.h"

namespace anadrome {

void UIScene::moveTo(UISceneActivationState state) {
    using enum UISceneActivationState;
    if (state == unattached)
        fatalError("A scene is taken away by UIApplication, not by its state");
    // On the way to and from the user's attention lies being seen without it.
    if (state != m_state && (state == foregroundActive || m_state == foregroundActive))
        if (m_state != foregroundInactive)
            stepTo(foregroundInactive);
    if (state != m_state)
        stepTo(state);
}

void UIScene::stepTo(UISceneActivationState state) {
    using enum UISceneActivationState;
    const UISceneActivationState former = m_state;
    m_state = state;
    const std::shared_ptr<UIWindowSceneDelegate> delegate = m_delegate;
    if (!delegate)
        return;
    if (state == foregroundActive)
        delegate->sceneDidBecomeActive(*this);
    else if (state == background)
        delegate->sceneDidEnterBackground(*this);
    else if (former == foregroundActive)
        delegate->sceneWillResignActive(*this);
    else
        delegate->sceneWillEnterForeground(*this);
}

} // namespace anadrome
