#pragma once

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/Services/Consent/UMPConsentQuestion.h"

#include <QBuffer>
#include <QImage>
#include <QLocale>
#include <QPainter>

/// What ad servers would send, in the user's language.
namespace anadrome::desktop {

struct ServerWords {
    std::string banner;
    std::string ad;
    std::vector<UMPConsentPurpose> purposes;
};

inline ServerWords serverWords() {
    if (QLocale().language() == QLocale::Japanese)
        return {"だれのものでもないバナー",
                "だれのものでもない次の冒険。今すぐ見てみよう！",
                {{"selection", "興味に合わせて広告を選ぶ"}, {"counting", "広告を見た人を数える"}}};
    return {"A banner of nobody’s",
            "Nobody’s next adventure. Look at it now!",
            {{"selection", "Choose ads by interests"}, {"counting", "Count who saw an ad"}}};
}

/// An ad's picture of its own making.
inline std::string adPicture(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, size.width(), size.height());
    sky.setColorAt(0, "#3B2A63");
    sky.setColorAt(1, "#E0719B");
    painter.fillRect(image.rect(), sky);
    painter.setPen(QPen(Qt::white, size.height() / 12.0));
    painter.drawEllipse(image.rect().center(), size.height() / 4, size.height() / 4);
    painter.end();
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data().toStdString();
}

/// Has a banner for every screen that asks for one, if it is wanted, and no other ads.
class BannerSource final : public GADAdSource {
public:
    bool hasBanner = false;

    void fetch(const GADAdPlace& place, const GADRequest&, Completion completion) override {
        DispatchQueue::main().async([this, completion = std::move(completion), format = place.format] {
            if (hasBanner && format == GADAdFormat::banner)
                completion(GADAdContent{.text = serverWords().banner,
                                        .link = "https://example.org",
                                        .picture = adPicture({320, 100})});
            else
                completion(NSError(GADErrorDomain, GADErrorNoFill, "There is no ad."));
        });
    }
};

} // namespace anadrome::desktop
