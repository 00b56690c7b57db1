#pragma once

#include "Desktop/System/Notification.h"

#include <QWindow>

namespace anadrome::desktop {

class JobWatch;

/// Tells the user that a movie is ready or has failed, if the window isn't what they look at; a click brings
/// it to the front. Main thread only.
class JobNotice {
public:
    /// Job and window are to outlive it.
    JobNotice(const JobWatch& job, QWindow& window);

private:
    void tell(const QString& title, const QString& text = {});

    QWindow& m_window;
    Notification m_notification;
};

} // namespace anadrome::desktop
