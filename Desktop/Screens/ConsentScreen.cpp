#include "Desktop/Screens/ConsentScreen.h"

#include "Platform/Services/Consent/UMPConsentFormViewController.h"

namespace anadrome::desktop {

int ConsentScreen::purposeCount() const {
    const auto form = controllerAs<UMPConsentFormViewController>();
    return form ? static_cast<int>(form->purposeRows().size()) : 0;
}

} // namespace anadrome::desktop
