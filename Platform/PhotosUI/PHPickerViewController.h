#pragma once

#include "Platform/Foundation/NSItemProvider.h"
#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

class PHPickerViewController;

enum class PHPickerFilter { any, videos };
/// Whether the picker may convert what it hands over.
enum class PHPickerConfigurationAssetRepresentationMode { automatic = 0, current = 1, compatible = 2 };

/// What a picker offers.
struct PHPickerConfiguration {
    PHPickerFilter filter = PHPickerFilter::any;
    /// 0 sets none.
    long selectionLimit = 1;
    PHPickerConfigurationAssetRepresentationMode preferredAssetRepresentationMode =
        PHPickerConfigurationAssetRepresentationMode::automatic;
};

/// One of the user's choices.
struct PHPickerResult {
    NSItemProvider itemProvider;
};

/// Hears what the user picked. It must dismiss the picker itself.
class PHPickerViewControllerDelegate {
public:
    virtual ~PHPickerViewControllerDelegate() = default;

    /// Without results: the user picked none.
    virtual void didFinishPicking(PHPickerViewController& picker,
                                  const std::vector<PHPickerResult>& results) = 0;
};

/// A choice from the user's own movies. The front end shows and operates it.
class PHPickerViewController : public UIViewController {
public:
    explicit PHPickerViewController(const PHPickerConfiguration& configuration)
        : m_configuration(configuration) {}

    const PHPickerConfiguration& configuration() const { return m_configuration; }
    /// Held weakly.
    void setDelegate(std::weak_ptr<PHPickerViewControllerDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    /// The user's choice, cut to the selection limit; no file for none. Without effect while the picker isn't
    /// presented.
    void finish(std::vector<URL> files);

private:
    const PHPickerConfiguration m_configuration;
    std::weak_ptr<PHPickerViewControllerDelegate> m_delegate;
};

} // namespace anadrome
