#pragma once

#include "Platform/Services/Ads/GADAdSource.h"

#include <deque>
#include <vector>

namespace anadrome {

/// Takes requests for ads of one format, and answers each when the test wants it to. Others never get an
/// answer.
class HeldAds final : public GADAdSource {
public:
    struct Asked {
        GADAdPlace place;
        GADRequest request;
    };

    explicit HeldAds(GADAdFormat format) : m_format(format) {}

    void fetch(const GADAdPlace& place, const GADRequest& request, Completion completion) override {
        if (place.format != m_format)
            return;
        asked.push_back({place, request});
        m_waiting.push_back(std::move(completion));
    }

    void give(GADAdContent content) { answer(std::move(content)); }
    void refuse() { answer(NSError(GADErrorDomain, GADErrorNetworkError, "no network")); }
    bool isWaiting() const { return !m_waiting.empty(); }

    std::vector<Asked> asked;

private:
    void answer(const Result<GADAdContent>& result) {
        const Completion completion = std::move(m_waiting.front());
        m_waiting.pop_front();
        completion(result);
    }

    const GADAdFormat m_format;
    std::deque<Completion> m_waiting;
};

} // namespace anadrome
