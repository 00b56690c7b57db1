#include "Platform/ProgressHUD/JGProgressHUD.h"

#include <utility>

namespace anadrome {

namespace {

JGProgressHUD::Observer& observer() {
    static JGProgressHUD::Observer instance;
    return instance;
}

} // namespace

void JGProgressHUD::setObserver(Observer newObserver) {
    observer() = std::move(newObserver);
}

void JGProgressHUD::setProgress(float progress) {
    m_progress = progress;
    changed();
}

void JGProgressHUD::setDetailText(std::string text) {
    m_detailText = std::move(text);
    changed();
}

void JGProgressHUD::show() {
    m_isVisible = true;
    changed();
}

void JGProgressHUD::dismiss() {
    if (!m_isVisible)
        return;
    m_isVisible = false;
    changed();
}

void JGProgressHUD::changed() const {
    if (observer())
        observer()(*this);
}

} // namespace anadrome
