#include "Platform/StoreKit/SKStoreProductViewController.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Deployment.h"

namespace anadrome {

void SKStoreProductViewController::loadProductWithParameters(const Dictionary& parameters,
                                                             Completion completion) {
    const std::string* number = findString(parameters, SKStoreProductParameterITunesItemIdentifier);
    m_productPage = number ? Deployment::current().productPage(*number) : "";
    std::optional<NSError> error;
    if (m_productPage.empty())
        error = NSError(SKErrorDomain, SKErrorStoreProductNotAvailable, "The store has no such product.");
    DispatchQueue::main().async([completion = std::move(completion), error] { completion(!error, error); });
}

} // namespace anadrome
