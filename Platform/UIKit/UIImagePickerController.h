#pragma once

#include "Platform/Foundation/URL.h"
#include "Platform/UIKit/UIViewController.h"

#include <map>
#include <optional>
#include <string>

namespace anadrome {

class UIImagePickerController;

enum class UIImagePickerControllerSourceType { photoLibrary = 0, camera = 1 };
enum class UIImagePickerControllerQualityType { high = 0, medium = 1, low = 2 };

/// Key of what the picker took: the URL of the recorded movie.
inline constexpr const char* UIImagePickerControllerMediaURL = "UIImagePickerControllerMediaURL";

/// Hears how a picker ended. It must dismiss the picker itself.
class UIImagePickerControllerDelegate {
public:
    using Info = std::map<std::string, URL>;

    virtual ~UIImagePickerControllerDelegate() = default;

    virtual void didFinishPickingMediaWithInfo(UIImagePickerController& picker, const Info& info) = 0;
    virtual void imagePickerControllerDidCancel(UIImagePickerController& picker) = 0;
};

/// The camera, with which the user records a movie. The front end shows and operates it.
class UIImagePickerController : public UIViewController {
public:
    /// Held weakly.
    void setDelegate(std::weak_ptr<UIImagePickerControllerDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    /// Type identifiers of what may be taken.
    const std::vector<std::string>& mediaTypes() const { return m_mediaTypes; }
    void setMediaTypes(std::vector<std::string> types) { m_mediaTypes = std::move(types); }
    UIImagePickerControllerSourceType sourceType() const { return m_sourceType; }
    void setSourceType(UIImagePickerControllerSourceType type) { m_sourceType = type; }
    bool allowsEditing() const { return m_allowsEditing; }
    void setAllowsEditing(bool allows) { m_allowsEditing = allows; }
    UIImagePickerControllerQualityType videoQuality() const { return m_videoQuality; }
    void setVideoQuality(UIImagePickerControllerQualityType quality) { m_videoQuality = quality; }

    /// The user took the recorded movie; none if the recording is nowhere to be found. Without effect while
    /// the picker isn't presented, as is cancel().
    void finishPicking(const std::optional<URL>& movie);
    void cancel();

private:
    std::shared_ptr<UIImagePickerControllerDelegate> delegateIfPresented() const {
        return presentingViewController() ? m_delegate.lock() : nullptr;
    }

    std::weak_ptr<UIImagePickerControllerDelegate> m_delegate;
    std::vector<std::string> m_mediaTypes;
    UIImagePickerControllerSourceType m_sourceType = UIImagePickerControllerSourceType::photoLibrary;
    bool m_allowsEditing = false;
    UIImagePickerControllerQualityType m_videoQuality = UIImagePickerControllerQualityType::medium;
};

} // namespace anadrome
