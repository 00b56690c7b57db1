#pragma once

#include "Platform/Foundation/URL.h"
#include "Platform/UIKit/UIViewController.h"

#include <string>

namespace anadrome {

class UIDocumentPickerViewController;

enum class UIDocumentPickerMode { import = 0 };

/// Hears what the user picked.
class UIDocumentPickerDelegate {
public:
    virtual ~UIDocumentPickerDelegate() = default;

    virtual void didPickDocumentsAtURLs(UIDocumentPickerViewController& picker,
                                        const std::vector<URL>& urls) = 0;
};

/// A choice of files from anywhere. The files are handed over as they lie: this program only reads them.
class UIDocumentPickerViewController : public UIViewController {
public:
    UIDocumentPickerViewController(std::vector<std::string> documentTypes, UIDocumentPickerMode mode)
        : m_documentTypes(std::move(documentTypes)), m_mode(mode) {}

    /// Held weakly.
    void setDelegate(std::weak_ptr<UIDocumentPickerDelegate> delegate) { m_delegate = std::move(delegate); }

    /// Type identifiers of what may be picked.
    const std::vector<std::string>& documentTypes() const { return m_documentTypes; }
    UIDocumentPickerMode mode() const { return m_mode; }

    /// The user's choice, or no file for none: the picker goes, then the delegate hears of files. Without
    /// effect while it isn't presented.
    void finish(const std::vector<URL>& files);

private:
    const std::vector<std::string> m_documentTypes;
    const UIDocumentPickerMode m_mode;
    std::weak_ptr<UIDocumentPickerDelegate> m_delegate;
};

} // namespace anadrome
