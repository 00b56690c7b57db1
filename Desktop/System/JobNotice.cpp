#include "Desktop/System/JobNotice.h"

#include "Desktop/System/BringForward.h"
#include "Desktop/System/JobWatch.h"
#include "Desktop/Texts.h"

namespace anadrome::desktop {

JobNotice::JobNotice(const JobWatch& job, QWindow& window) : m_window(window) {
    QObject::connect(&job, &JobWatch::made, &m_notification, [this] { tell(Texts::of("MovieIsReady")); });
    QObject::connect(&job, &JobWatch::failed, &m_notification,
                     [this](const QString& message) { tell(Texts::of("MovieHasFailed"), message); });
    QObject::connect(&window, &QWindow::activeChanged, &m_notification, [this] {
        if (m_window.isActive())
            m_notification.withdraw();
    });
    QObject::connect(
        &m_notification, &Notification::clicked, &m_notification,
        [this](const QString& activationToken) { bringForward(m_window, activationToken.toStdString()); });
}

void JobNotice::tell(const QString& title, const QString& text) {
    if (!m_window.isActive())
        m_notification.show(title, text);
}

} // namespace anadrome::desktop
