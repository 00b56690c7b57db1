#include "Platform/Services/GADAdSource.h"

#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

namespace {

/// Nothing leaves the machine unless somebody set a source.
class NoAds final : public GADAdSource {
public:
    void fetch(const GADAdPlace&, const GADRequest&, Completion completion) override {
        DispatchQueue::main().async([completion = std::move(completion)] {
            completion(NSError(GADErrorDomain, GADErrorNetworkError, "No ad server is configured."));
        });
    }
};

std::shared_ptr<GADAdSource>& currentSource() {
    static std::shared_ptr<GADAdSource> source = std::make_shared<NoAds>();
    return source;
}

} // namespace

GADAdSource& GADAdSource::current() {
    return *currentSource();
}

void GADAdSource::setCurrent(std::shared_ptr<GADAdSource> source) {
    currentSource() = source ? std::move(source) : std::make_shared<NoAds>();
}

} // namespace anadrome
