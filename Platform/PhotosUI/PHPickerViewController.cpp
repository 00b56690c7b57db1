#include "Platform/PhotosUI/PHPickerViewController.h"

namespace anadrome {

void PHPickerViewController::finish(std::vector<URL> files) {
    const auto delegate = m_delegate.lock();
    if (!presentingViewController() || !delegate)
        return;
    const auto limit = static_cast<std::size_t>(m_configuration.selectionLimit);
    if (limit > 0 && files.size() > limit)
        files.resize(limit);
    std::vector<PHPickerResult> results;
    for (const URL& file : files)
        results.push_back({NSItemProvider(file)});
    delegate->didFinishPicking(*this, results);
}

} // namespace anadrome
