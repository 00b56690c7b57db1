#include "Desktop/Items/BannerItem.h"

#include "Desktop/PictureProvider.h"
#include "Platform/Services/Deployment.h"

namespace anadrome::desktop {

bool BannerItem::isOffered() {
    return !Deployment::current().bannerAdUnitID.empty();
}

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

QUrl BannerItem::picture() const {
    return ask<GADBannerView>([](GADBannerView& banner) {
        return banner.content() ? PictureProvider::addressOf(banner.content()->picture) : QUrl();
    });
}

bool BannerItem::leads() const {
    return ask<GADBannerView>(
        [](GADBannerView& banner) { return banner.content() && !banner.content()->link.empty(); });
}

void BannerItem::click() {
    act<GADBannerView>([](GADBannerView& banner) { banner.click(); });
}

} // namespace anadrome::desktop
