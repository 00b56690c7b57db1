#include "Desktop/System/CloseQuestion.h"

#include "Desktop/DesktopHost.h"
#include "Desktop/System/JobWatch.h"

namespace anadrome::desktop {

CloseQuestion::CloseQuestion(DesktopHost& host, const JobWatch& job) : m_host(host), m_job(job) {
    connect(&job, &JobWatch::ended, this, [this] { setAsked(false); });
    connect(host.hud(), &Hud::changed, this, &CloseQuestion::closeIfSaved);
    // A dialog is to be seen.
    connect(host.presented(), &ScreenList::countChanged, this, [this] { m_awaitsSave = false; });
}

bool CloseQuestion::mayClose() {
    if (m_isAgreed)
        return true;
    m_awaitsSave = isSaving();
    setAsked(m_job.isRunning());
    return !m_awaitsSave && !m_isAsked;
}

void CloseQuestion::close() {
    m_isAgreed = true;
    setAsked(false);
    Q_EMIT closing();
}

bool CloseQuestion::isSaving() const {
    const Hud& hud = *m_host.hud();
    return hud.isVisible() && hud.kind() == "ring" && m_host.stack()->top()->kind() == "Preview";
}

void CloseQuestion::setAsked(bool isAsked) {
    if (std::exchange(m_isAsked, isAsked) != isAsked)
        Q_EMIT askedChanged();
}

void CloseQuestion::closeIfSaved() {
    if (m_awaitsSave && m_host.hud()->isVisible() && m_host.hud()->kind() == "tick")
        close();
}

} // namespace anadrome::desktop
