#pragma once

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/UIKit/UIViewController.h"

#include <optional>
#include <string>

namespace anadrome {

/// Key of a product's parameters: its number in the store, a string.
inline constexpr const char* SKStoreProductParameterITunesItemIdentifier = "id";

inline constexpr const char* SKErrorDomain = "SKErrorDomain";
/// Code of SKErrorDomain: the store has no such product.
inline constexpr long SKErrorStoreProductNotAvailable = 5;

/// A product's page in the store that is deployed. The front end shows where it lies.
class SKStoreProductViewController : public UIViewController {
public:
    using Completion = std::function<void(bool isLoaded, const std::optional<NSError>& error)>;

    /// Looks up where the product's page lies; asks nobody for it. Fails without a store or a number.
    /// Completes once, on the main queue, never before the call returns.
    void loadProductWithParameters(const Dictionary& parameters, Completion completion);

    /// The address of the page; empty until it is loaded.
    const std::string& productPage() const { return m_productPage; }

private:
    std::string m_productPage;
};

} // namespace anadrome
