#include "Platform/Dispatch/MainThread.h"

#include <QCoreApplication>
#include <QThread>

namespace anadrome {

bool isMainThread() {
    const QCoreApplication* application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

} // namespace anadrome
