#include "Platform/Services/Ads/GADAdSource.h"

#include "Platform/Services/Ads/GADAdServer.h"

namespace anadrome {

namespace {

std::shared_ptr<GADAdSource>& currentSource() {
    static std::shared_ptr<GADAdSource> source = std::make_shared<GADAdServer>();
    return source;
}

} // namespace

GADAdSource& GADAdSource::current() {
    return *currentSource();
}

void GADAdSource::setCurrent(std::shared_ptr<GADAdSource> source) {
    currentSource() = source ? std::move(source) : std::make_shared<GADAdServer>();
}

} // namespace anadrome
