#include "Desktop/System/CloseQuestion.h"

#include "Desktop/Camera/CameraScreen.h"
#include "Desktop/DesktopHost.h"
#include "Desktop/Screens/ShareScreen.h"

namespace anadrome::desktop {

CloseQuestion::CloseQuestion(DesktopHost& host) : m_host(host) {
    connect(host.job(), &JobWatch::runningChanged, this, [this] { setAsked(false); });
    connect(host.hud(), &Hud::changed, this, &CloseQuestion::closeIfSaved);
    connect(host.presented(), &ScreenList::countChanged, this, &CloseQuestion::closeIfSaved);
}

bool CloseQuestion::mayClose() {
    if (m_isAgreed)
        return true;
    // The camera's own way out doesn't lose a clip without a question.
    auto* camera = qobject_cast<CameraScreen*>(m_host.presented()->top());
    if (camera && camera->hasClip()) {
        camera->close();
        return false;
    }
    m_awaited = saving();
    setAsked(m_host.job()->isRunning());
    return m_awaited == Saving::nothing && !m_isAsked;
}

void CloseQuestion::close() {
    m_isAgreed = true;
    setAsked(false);
    Q_EMIT closing();
}

CloseQuestion::Saving CloseQuestion::saving() const {
    const auto* sheet = qobject_cast<const ShareScreen*>(m_host.presented()->top());
    if (sheet && sheet->isCopying())
        return Saving::copy;
    const Hud& hud = *m_host.hud();
    const ShownScreen* screen = m_host.stack()->top();
    const bool isOnPreview = screen && screen->kind() == "Preview";
    return isOnPreview && hud.isVisible() && hud.kind() == "ring" ? Saving::movie : Saving::nothing;
}

void CloseQuestion::setAsked(bool isAsked) {
    if (std::exchange(m_isAsked, isAsked) != isAsked)
        Q_EMIT askedChanged();
}

/// A movie that is saved gets a tick; the sheet goes with its copy. What fails brings a dialog.
void CloseQuestion::closeIfSaved() {
    if (m_awaited == Saving::nothing || saving() == m_awaited)
        return;
    const bool isDialogOver = m_host.presented()->count() > 0;
    const bool isTicked = m_host.hud()->isVisible() && m_host.hud()->kind() == "tick";
    if (isDialogOver)
        m_awaited = Saving::nothing;
    else if (m_awaited == Saving::copy || isTicked)
        close();
}

} // namespace anadrome::desktop
