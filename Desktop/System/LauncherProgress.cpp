#include "Desktop/System/LauncherProgress.h"

#include "Desktop/System/JobWatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <chrono>

namespace anadrome::desktop {

namespace {

using namespace std::chrono_literals;

/// The desktop isn't told more often.
constexpr auto pause = 100ms;

void tell(bool isVisible, double progress) {
    QDBusMessage update = QDBusMessage::createSignal("/com/canonical/unity/launcherentry/anadrome",
                                                     "com.canonical.Unity.LauncherEntry", "Update");
    update << "application://anadrome.desktop"
           << QVariantMap{{"progress", progress}, {"progress-visible", isVisible}};
    QDBusConnection::sessionBus().send(update);
}

} // namespace

LauncherProgress::LauncherProgress(const JobWatch& job) : m_job(job) {
    m_pause.setSingleShot(true);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] { tellIfChanged(); });
    for (const auto change : {&JobWatch::runningChanged, &JobWatch::progressed})
        QObject::connect(&job, change, &m_pause, [this] { follow(); });
}

void LauncherProgress::follow() {
    if (!m_pause.isActive())
        tellIfChanged();
}

void LauncherProgress::tellIfChanged() {
    const Shown now{m_job.isRunning(), m_job.progress()};
    if (now == m_told)
        return;
    m_told = now;
    tell(now.isVisible, now.progress);
    m_pause.start(pause);
}

} // namespace anadrome::desktop
