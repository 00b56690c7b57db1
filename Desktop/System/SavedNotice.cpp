#include "Desktop/System/SavedNotice.h"

#include "Desktop/DesktopHost.h"
#include "Desktop/Texts.h"
#include "Platform/Foundation/UserFolders.h"

namespace anadrome::desktop {

SavedNotice::SavedNotice(DesktopHost& host) : m_host(host) {
    connect(host.hud(), &Hud::changed, this, &SavedNotice::look);
}

void SavedNotice::look() {
    const Hud& hud = *m_host.hud();
    const bool hasTick = hud.isVisible() && hud.kind() == "tick";
    if (std::exchange(m_hasTick, hasTick) && !hasTick) {
        const std::string videos = URL::fileURLWithPath(userVideosFolder()).lastPathComponent();
        Q_EMIT m_host.noticeGiven(Texts::of("SavedIn").arg(QString::fromStdString(videos) + "/Anadrome"));
    }
}

} // namespace anadrome::desktop
