#include "Desktop/Items/BannerItem.h"

#include "Platform/Services/Ads/GADBannerView.h"

namespace anadrome::desktop {

bool BannerItem::isFilled() const {
    return ask<GADBannerView>([](GADBannerView& banner) { return banner.content().has_value(); });
}

double BannerItem::height() const {
    return ask<GADBannerView>([](GADBannerView& banner) { return banner.adSize().size.height; });
}

QString BannerItem::text() const {
    return ask<GADBannerView>([](GADBannerView& banner) {
        return banner.content() ? QString::fromStdString(banner.content()->text) : QString();
    });
}

void BannerItem::click() {
    act<GADBannerView>([](GADBannerView& banner) { banner.click(); });
}

} // namespace anadrome::desktop
