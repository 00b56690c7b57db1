#pragma once

namespace anadrome {

/// What is told about the user when the consent state is brought up to date.
class UMPRequestParameters {
public:
    /// Whether the user is too young to consent. Such a user's ads are never personalised.
    bool tagForUnderAgeOfConsent() const { return m_tagForUnderAgeOfConsent; }
    void setTagForUnderAgeOfConsent(bool isUnderAge) { m_tagForUnderAgeOfConsent = isUnderAge; }

private:
    bool m_tagForUnderAgeOfConsent = false;
};

} // namespace anadrome
