#include "Platform/Services/Ads/GADBannerView.h"

#include "Platform/Services/Ads/GADAdSource.h"

namespace anadrome {

void GADBannerView::loadRequest(const GADRequest& request) {
    if (!m_adSize.isValid())
        return;
    const std::weak_ptr<UIView> weak = weak_from_this();
    GADAdSource::current().fetch({GADAdFormat::banner, m_adUnitID, m_adSize.size}, request,
                                 [this, weak](Result<GADAdContent> result) {
                                     const auto alive = weak.lock();
                                     if (!alive || !result)
                                         return;
                                     m_content = std::move(*result);
                                     noteChange();
                                 });
}

void GADBannerView::click() const {
    if (m_content && !m_rootViewController.expired() && canBeTouched())
        clickAd(*m_content);
}

} // namespace anadrome
