#include "Platform/Services/Http/HttpClient.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Http/HttpAddress.h"
#include "Platform/Services/Http/HttpExchange.h"

#include <QCoreApplication>
#include <QEvent>
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

/// Takes requests to its thread under a mutex of ours; Qt only wakes the thread up.
class Network final : public QObject {
public:
    /// Any thread.
    void add(HttpRequest request, Completion completion) {
        std::lock_guard lock(m_mutex);
        m_requests.emplace_back(std::move(request), std::move(completion));
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

private:
    void customEvent(QEvent*) override {
        auto [request, completion] = take();
        beginHttpExchange(m_manager, request, std::move(completion));
    }

    std::pair<HttpRequest, Completion> take() {
        std::lock_guard lock(m_mutex);
        auto next = std::move(m_requests.front());
        m_requests.pop_front();
        return next;
    }

    std::mutex m_mutex;
    std::deque<std::pair<HttpRequest, Completion>> m_requests;
    /// A child, so that it goes to the thread along.
    QNetworkAccessManager m_manager{this};
};

/// First asked for on the main thread while there is an application, and ended with it. Never destroyed.
class HttpThread {
public:
    static HttpThread& shared() {
        static HttpThread& thread = *new HttpThread;
        return thread;
    }

    Network& network() { return m_network; }

private:
    HttpThread() : m_network(*new Network) {
        m_thread.setObjectName("http");
        m_network.moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, &m_network, prepareForExit);
        QObject::connect(&m_thread, &QThread::finished, &m_network, &QObject::deleteLater);
        qAddPostRoutine([] { shared().end(); });
        m_thread.start();
    }

    /// exit() may come while the application lives, as when the display is lost. The TLS library then clears
    /// up after itself in a function like this one, and the later registered of the two runs first.
    static void prepareForExit() {
        QSslSocket::supportsSsl();
        std::atexit([] { shared().end(); });
    }

    void end() {
        m_thread.quit();
        m_thread.wait();
    }

    QThread m_thread;
    /// Lives on the thread, and goes with it.
    Network& m_network;
};

NSError unsupportedAddress() {
    return NSError(NSURLErrorDomain, NSURLErrorUnsupportedURL, "The address isn't one of a web server.");
}

} // namespace

void HttpClient::send(HttpRequest request, Completion completion) {
    DispatchQueue::main().async([request = std::move(request), completion = std::move(completion)]() mutable {
        if (isHttpAddress(request.address))
            HttpThread::shared().network().add(std::move(request), std::move(completion));
        else
            completion(unsupportedAddress());
    });
}

} // namespace anadrome
