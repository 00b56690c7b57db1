#include "Desktop/Screens/AdScreen.h"

#include "Desktop/PictureProvider.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"

namespace anadrome::desktop {

namespace {

constexpr int secondsUntilClosable = 5;

} // namespace

AdScreen::AdScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
    : ShownScreen(controller, std::move(kind), parent), m_secondsLeft(secondsUntilClosable) {
    connect(&m_second, &QTimer::timeout, this, [this] {
        if (--m_secondsLeft == 0)
            m_second.stop();
        Q_EMIT secondsLeftChanged();
    });
    m_second.start(std::chrono::seconds(1));
}

QString AdScreen::text() const {
    const auto ad = controllerAs<GADFullScreenAdViewController>();
    return ad ? QString::fromStdString(ad->content().text) : QString();
}

QUrl AdScreen::picture() const {
    const auto ad = controllerAs<GADFullScreenAdViewController>();
    return ad ? PictureProvider::addressOf(ad->content().picture) : QUrl();
}

bool AdScreen::leads() const {
    const auto ad = controllerAs<GADFullScreenAdViewController>();
    return ad && !ad->content().link.empty();
}

void AdScreen::click() {
    if (const auto ad = controllerAs<GADFullScreenAdViewController>())
        ad->click();
}

void AdScreen::close() {
    const auto ad = controllerAs<GADFullScreenAdViewController>();
    if (ad && m_secondsLeft == 0)
        ad->close();
}

} // namespace anadrome::desktop
