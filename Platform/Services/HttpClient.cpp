#include "Platform/Services/HttpClient.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/HttpAddress.h"
#include "Platform/Services/HttpExchange.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QSslSocket>
#include <QThread>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <utility>

namespace anadrome {

namespace {

using Completion = HttpClient::Completion;

/// The thread and its network. Requests pass to it under a mutex of ours; Qt only wakes it up.
class HttpThread {
public:
    /// First called on the main thread while there is an application. Never destroyed; ended with the
    /// application.
    static HttpThread& shared() {
        static HttpThread& thread = *new HttpThread;
        return thread;
    }

    void add(HttpRequest request, Completion completion) {
        std::lock_guard lock(m_mutex);
        m_requests.emplace_back(std::move(request), std::move(completion));
        QMetaObject::invokeMethod(
            m_manager, [this] { beginNext(); }, Qt::QueuedConnection);
    }

private:
    HttpThread() : m_manager(new QNetworkAccessManager) {
        m_thread.setObjectName("http");
        m_manager->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_manager, &QObject::deleteLater);
        QMetaObject::invokeMethod(m_manager, prepareForExit, Qt::QueuedConnection);
        qAddPostRoutine([] { shared().end(); });
        m_thread.start();
    }

    /// exit() may come while the application lives, as when the display is lost. The TLS library then clears
    /// up after itself in a function like this one, and the later registered of the two runs first.
    static void prepareForExit() {
        QSslSocket::supportsSsl();
        std::atexit([] { shared().end(); });
    }

    void beginNext() {
        auto [request, completion] = take();
        beginHttpExchange(*m_manager, request, std::move(completion));
    }

    std::pair<HttpRequest, Completion> take() {
        std::lock_guard lock(m_mutex);
        auto next = std::move(m_requests.front());
        m_requests.pop_front();
        return next;
    }

    void end() {
        m_thread.quit();
        m_thread.wait();
    }

    QThread m_thread;
    /// Lives on the thread, and goes with it.
    QNetworkAccessManager* const m_manager;
    std::mutex m_mutex;
    std::deque<std::pair<HttpRequest, Completion>> m_requests;
};

NSError unsupportedAddress() {
    return NSError(NSURLErrorDomain, NSURLErrorUnsupportedURL, "The address isn't one of a web server.");
}

} // namespace

void HttpClient::send(HttpRequest request, Completion completion) {
    DispatchQueue::main().async([request = std::move(request), completion = std::move(completion)]() mutable {
        if (isHttpAddress(request.address))
            HttpThread::shared().add(std::move(request), std::move(completion));
        else
            completion(unsupportedAddress());
    });
}

} // namespace anadrome
